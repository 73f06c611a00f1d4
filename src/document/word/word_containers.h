#pragma once

#include "document/model/event.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace scrivalen::document {

inline constexpr int kListIndent = 440;   ///< of each level, in twips
inline constexpr int kQuoteIndent = 360;  ///< the same

/// What a paragraph is, which decides its style.
enum class BlockKind { Normal, Heading, Title, Quote, Code, List, Contents, Rule };

/// The quotes and lists that are open in a word processor's file, and the item that has begun without its marker.
class WordContainers {
 public:
  /// @param textWidth  of the page, in twips
  explicit WordContainers(int textWidth) : textWidth_(textWidth) {}
  WordContainers(const WordContainers&) = delete;
  WordContainers& operator=(const WordContainers&) = delete;
  virtual ~WordContainers() = default;

  void beginQuote() { open_.emplace_back(); }
  void beginList(const Event& list);
  void end() { open_.pop_back(); }
  void beginItem(Task task);

  /// The kind of a paragraph in them.
  BlockKind kind() const;
  /// From the left margin, in twips.
  int indent() const;
  /// Whether an item has begun whose marker is not written.
  bool hasMarker() const { return markerDepth_ > 0; }

 protected:
  struct Container {
    bool isList = false;
    bool isOrdered = false;
    bool isTight = false;
    std::int64_t number = 0;  // of the next item
    int list = 0;             // its number among the lists of the file; 0: its items are numbered by text
    int level = 0;            // among lists
  };

  const std::vector<Container>& open() const { return open_; }
  bool isInQuote() const;
  /// The list of the item that has begun. There must be one.
  const Container& markedList() const { return open_[markerDepth_ - 1]; }
  /// The same; the item counts as marked from now on.
  Container& takeMarkedList();
  Task task() const { return task_; }

 private:
  /// @param level  of the list, among those around it
  /// @return the list's number in the file
  virtual int addList(const Event& list, int level) = 0;

  const int textWidth_;
  std::vector<Container> open_;
  std::size_t markerDepth_ = 0;  // of the list of an item that has begun; 0: its marker is written
  Task task_ = Task::None;
};

}  // namespace scrivalen::document
