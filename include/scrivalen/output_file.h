#pragma once

#include <scrivalen/export.h>

#include <cstddef>
#include <cstdint>
#include <memory>

/// A byte stream that is open for writing. A host may derive its own (memory, a socket) and pass it to RTFdoc::BegDoc
/// or to HtmlReport::Open; neither takes ownership.
class SCRIVALEN_API OutputFile {
 public:
  OutputFile();
  OutputFile(const OutputFile&) = delete;
  OutputFile& operator=(const OutputFile&) = delete;
  virtual ~OutputFile();

  /// Appends bytes. An exception thrown here passes through RTFdoc to the caller; HtmlReport catches it, and Close
  /// reports it.
  /// @param data  the bytes; not null unless @p size is 0; read during the call only
  /// @param size  the number of bytes
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
/// The first failed write is remembered with the system's reason and logged once; later writes do nothing, and Flush
/// and Close return false. Nothing is ever thrown: if memory runs out, the file cannot be opened.
class SCRIVALEN_API ReportFile : public OutputFile {
 public:
  ReportFile();
  /// Closes the file if it is still open; a failure is logged.
  ~ReportFile() override;

  /// Creates or truncates a file for exclusive writing: a file that is already open for writing through this library is
  /// refused and left untouched. On Linux the lock is advisory: programs that do not check it can still write the file.
  /// @param name  the file's path; its folder must exist; null is an empty path
  /// @return true if the file was opened; false with the reason in Error otherwise. False too if this object already
  ///         has a file open, which stays open
  bool Open(const wchar_t* name);

  /// Appends bytes; does nothing without an open file.
  void Write(const void* data, std::size_t size) override;

  /// The number of bytes written since Open, including those in the buffer; 0 without an open file.
  std::uint64_t Position() const;

  /// Passes the buffered bytes to the operating system; does not wait for the disk.
  /// @return false if bytes were lost since Open
  bool Flush();

  /// Flushes and closes the file; harmless without an open file.
  /// @return false if not all bytes written since Open reached the file; WriteError says why
  bool Close();

  /// Whether a file is open.
  bool IsOpen() const;

  /// The operating system's handle: a HANDLE on Windows, a file descriptor cast to a pointer on Linux; null without an
  /// open file. A descriptor is 3 or above, so that none is mistaken for null. Call Flush before writing to the handle
  /// directly.
  void* Handle() const;

  /// The path last passed to Open; never null.
  const wchar_t* Name() const;

  /// Why the last Open failed; empty if it succeeded. Valid until the next Open.
  const wchar_t* Error() const;

  /// The system's text for the first failed write since Open; empty if there was none. Valid until the next Open.
  const wchar_t* WriteError() const;

 private:
  /// The library's own writers write their bytes directly into the buffer.
  friend scrivalen::OutputBuffer* scrivalen::bufferOf(ReportFile& file);
  /// Makes the file of a writer that cannot continue fail: nothing more is written, and Close returns false.
  friend void scrivalen::giveUp(ReportFile& file, const wchar_t* reason);
  struct State;
  std::unique_ptr<State> state_;
};
