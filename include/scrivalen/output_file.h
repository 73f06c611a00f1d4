#pragma once

#include <scrivalen/export.h>

#include <cstddef>
#include <cstdint>
#include <memory>

/// A byte stream that is open for writing. A host may derive its own (memory, a socket) and hand it to RTFdoc::BegDoc
/// or to HtmlReport::Open; neither owns it.
class SCRIVALEN_API OutputFile {
 public:
  OutputFile();
  OutputFile(const OutputFile&) = delete;
  OutputFile& operator=(const OutputFile&) = delete;
  virtual ~OutputFile();

  /// Appends bytes. What it raises passes through RTFdoc to the caller; HtmlReport keeps it, and Close reports it.
  /// @param data  the bytes; not null unless @p size is 0; only read during the call
  /// @param size  how many bytes
  virtual void Write(const void* data, std::size_t size) = 0;
};

class ReportFile;

namespace scrivalen {
class OutputBuffer;
OutputBuffer* bufferOf(ReportFile& file);
void giveUp(ReportFile& file, const wchar_t* reason);
}  // namespace scrivalen

/// A file on disk, open for writing by this object alone and buffered (64 KiB).
///
/// The first write that fails is remembered with the system's reason and logged once; later writes do nothing, and
/// Flush and Close return false. Nothing is ever raised: a file for which memory runs out cannot be opened.
class SCRIVALEN_API ReportFile : public OutputFile {
 public:
  ReportFile();
  /// Closes the file when it is still open; a failure is logged.
  ~ReportFile() override;

  /// Creates or truncates a file for writing, with exclusive sharing: a file that anyone holds open for writing through
  /// this library is refused and stays untouched. On Linux other programs do not notice that it is held.
  /// @param name  the file's path, whose folder must exist; null is an empty path
  /// @return true when the file is open; false with the reason in Error, or when this object has a file open already,
  ///         which stays open
  bool Open(const wchar_t* name);

  /// Appends bytes; without an open file it does nothing.
  void Write(const void* data, std::size_t size) override;

  /// The number of bytes written since Open, those in the buffer included; 0 without an open file.
  std::uint64_t Position() const;

  /// Hands the buffered bytes to the operating system; it does not wait for the disk.
  /// @return false when bytes were lost since Open
  bool Flush();

  /// Flushes and closes the file; harmless without an open file.
  /// @return false when bytes written since Open did not all reach the file; WriteError says why
  bool Close();

  /// Whether there is a file between Open and Close.
  bool IsOpen() const;

  /// The operating system's handle: a HANDLE on Windows, a file descriptor carried in the pointer on Linux; null
  /// without an open file. A descriptor is 3 or above, so that none is mistaken for null. Bytes written around this
  /// object must follow a Flush.
  void* Handle() const;

  /// The path that was given to Open last; never null.
  const wchar_t* Name() const;

  /// Why the last opening failed; empty when it did not. Valid until the next opening.
  const wchar_t* Error() const;

  /// The system's text for the first failed write since Open; empty when there was none. Valid until the next opening.
  const wchar_t* WriteError() const;

 private:
  /// The library's own writers put their bytes into the buffer instead of handing them over.
  friend scrivalen::OutputBuffer* scrivalen::bufferOf(ReportFile& file);
  /// A writer that cannot go on lets its file fail: nothing more is written, and Close returns false.
  friend void scrivalen::giveUp(ReportFile& file, const wchar_t* reason);
  struct State;
  std::unique_ptr<State> state_;
};
