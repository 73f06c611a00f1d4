#pragma once

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string_view>

namespace PDFStuffer {

/// Whether a file keeps the bytes it has always had, or follows PDF 1.4 where those do not.
enum class Form { Classic, Conforming };

/// A growable text on its way to the file, with the form in which it is to be written.
///
/// Texts are UTF-16. Of each code unit the file gets the low byte, and only that is kept: a page's content is long.
class CPDFMemBlock {
 public:
  explicit CPDFMemBlock(Form form = Form::Classic) : form_(form) {}
  CPDFMemBlock(const CPDFMemBlock&) = delete;
  CPDFMemBlock& operator=(const CPDFMemBlock&) = delete;
  virtual ~CPDFMemBlock() = default;

  /// Makes room. When memory is exhausted the sizes grow all the same, and what does not fit is dropped in silence.
  void Reserve(std::uint64_t extra);

  void Append(std::u16string_view text);
  void Append(std::string_view text);
  void AppendBlock(const CPDFMemBlock& block) {
    Append(block.text());
    isWhole_ = isWhole_ && block.isWhole_;
  }

  std::string_view text() const;
  /// Forgets the text and keeps its room for the next one; room for which there was no memory is forgotten too.
  void Rewind();
  /// How many code units were appended.
  std::uint64_t length() const { return size - free; }
  /// Whether everything that was to be written into it is there; what is lost is left out in silence.
  bool isWhole() const { return isWhole_; }
  void noteLoss() { isWhole_ = false; }
  Form form() const { return form_; }
  bool isConforming() const { return form_ == Form::Conforming; }

  struct Release {
    void operator()(char* bytes) const { std::free(bytes); }
  };
  std::unique_ptr<char, Release> data;
  /// How many code units there is room for, and for how many of them still.
  std::uint64_t size = 0;
  std::uint64_t free = 0;

 private:
  char* take(std::size_t length);
  bool growCapacity(std::uint64_t needed);
  void zeroDropped(std::uint64_t usable);

  Form form_;
  bool isWhole_ = true;
  std::uint64_t usable_ = 0;  // for how much of the size there is memory; once text was dropped, how much of it is kept
  std::uint64_t capacity_ = 0;  // how many bytes there are behind data
};

}  // namespace PDFStuffer
