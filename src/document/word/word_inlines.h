#pragma once

#include "document/model/event.h"
#include "document/model/warnings.h"
#include "output/output_buffer.h"

#include <string>
#include <string_view>
#include <vector>

namespace scrivalen::document {

/// The size that a picture may have, in twips.
struct Room {
  int width = 1;
  int height = 1;
};

/// The title of a link, cut to the length that Word takes.
/// @param warnings  gets one about a title that is cut
std::string_view linkTitle(std::string_view title, OutputWarnings& warnings);

/// What is inside a paragraph or cell of a word processor's file: text, spans, links, places and pictures.
class WordInlines : public EventSink {
 public:
  /// @param out  not owned; must outlive this object
  explicit WordInlines(OutputBuffer& out) : out_(&out) {}

  void setOutput(OutputBuffer& out) { out_ = &out; }
  /// The size that pictures may have.
  void setRoom(Room room) { room_ = room; }
  Room room() const { return room_; }
  /// Whether places are written; those in a repeated part of a table are not.
  void setPlaces(bool on) { hasPlaces_ = on; }
  /// Whether a place has been written since they were forgotten.
  bool hasWrittenPlaces() const { return hasWrittenPlaces_; }
  void forgetPlaces() { hasWrittenPlaces_ = false; }

  /// Keeps a place between blocks for the next line of text.
  void hold(std::string_view id);
  bool holdsPlaces() const { return !held_.empty(); }
  void writeHeld();

  /// Writes text with the looks that are open.
  virtual void writeText(std::string_view text) = 0;
  /// Writes the text of an entry in the contents, as a link to its heading, and the number of its page.
  virtual void writePageLink(const Event& item) = 0;
  /// Whether content of the host for this format is written as it stands.
  virtual bool takesRaw() const = 0;

 protected:
  OutputBuffer& out() { return *out_; }
  void anchor(std::string_view id);

 private:
  virtual void writePlace(std::string_view id) = 0;

  OutputBuffer* out_;
  Room room_;
  bool hasPlaces_ = true;
  bool hasWrittenPlaces_ = false;
  std::vector<std::string> held_;
};

}  // namespace scrivalen::document
