#pragma once

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string_view>

namespace PDFStuffer {

/// Whether a file keeps its traditional bytes or follows PDF 1.4 where they do not.
enum class Form { Classic, Conforming };

/// A growable buffer for text on its way to the file, with the form to write it in.
///
/// Texts are UTF-16, but only the low byte of each code unit is stored, as it is written to the file: page content is
/// long.
class CPDFMemBlock {
 public:
  explicit CPDFMemBlock(Form form = Form::Classic) : form_(form) {}
  CPDFMemBlock(const CPDFMemBlock&) = delete;
  CPDFMemBlock& operator=(const CPDFMemBlock&) = delete;
  virtual ~CPDFMemBlock() = default;

  /// Increases the capacity. If memory runs out, the sizes still grow, and text that does not fit is silently dropped.
  void Reserve(std::uint64_t extra);

  void Append(std::u16string_view text);
  void Append(std::string_view text);
  void AppendBlock(const CPDFMemBlock& block) {
    Append(block.text());
    isWhole_ = isWhole_ && block.isWhole_;
  }

  std::string_view text() const;
  /// Clears the text and keeps the allocated capacity for the next one. Capacity without memory is given up.
  void Rewind();
  /// The number of code units appended.
  std::uint64_t length() const { return size - free; }
  /// Whether no text was lost; lost text is left out silently.
  bool isWhole() const { return isWhole_; }
  void noteLoss() { isWhole_ = false; }
  Form form() const { return form_; }
  bool isConforming() const { return form_ == Form::Conforming; }

  struct Release {
    void operator()(char* bytes) const { std::free(bytes); }
  };
  std::unique_ptr<char, Release> data;
  /// The capacity and the free part of it, in code units.
  std::uint64_t size = 0;
  std::uint64_t free = 0;

 private:
  char* take(std::size_t length);
  bool allocate(std::uint64_t needed);
  void zeroDropped(std::uint64_t usable);

  Form form_;
  bool isWhole_ = true;
  std::uint64_t usable_ = 0;     // the part of the size that has memory; once text was dropped, the part kept
  std::uint64_t allocated_ = 0;  // the bytes allocated at data
};

}  // namespace PDFStuffer
