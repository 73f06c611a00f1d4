#pragma once

#include <string>
#include <string_view>

namespace scrivalen::command {

/// A Markdown text whose single tildes the parser does not see. It takes "~a~" for struck out text, but only "~~a~~"
/// is: tildes mean "about" or "home" as well. In a copy another character stands in for them; what the parser returns
/// of the copy is looked up in the original.
class MaskedTildes {
 public:
  /// @param original  must outlive this object
  explicit MaskedTildes(std::string_view original);

  /// What the parser is to read: the original itself if it has no single tilde.
  std::string_view text() const { return copy_.empty() ? original_ : std::string_view(copy_); }
  bool isMasked() const { return !copy_.empty(); }

  /// Whether a text is a part of text().
  bool holds(std::string_view part) const;
  /// The same part of the original. A text that the parser did not take from text() is returned as it is.
  std::string_view original(std::string_view part) const;

  /// Whether it cannot be seen from a text alone, made by the parser of several parts, if it had tildes.
  bool isAmbiguous(std::string_view made) const { return isMaskUsed_ && made.find(mask_) != made.npos; }
  /// Puts the tildes back into such a text that is not ambiguous.
  void restore(std::string& made) const;
  /// A second copy, in which yet another character stands in for the tildes.
  std::string twin() const;
  /// Puts the tildes back where two texts, made of text() and of its twin, differ.
  static void restore(std::string& made, std::string_view twin);

 private:
  std::string masked(char mask) const;

  std::string_view original_;
  std::string copy_;
  char mask_ = '~';
  bool isMaskUsed_ = false;  // in the original
};

}  // namespace scrivalen::command
