#pragma once

#include "document/model/writer.h"
#include "document/run.h"
#include "output/output_buffer.h"
#include "output/target_file.h"
#include "system/files/files.h"

#include <cstddef>
#include <memory>
#include <string>

namespace scrivalen::document {

/// A format that documents are written in.
struct Format {
  std::string_view name;  ///< as the interface has it
  CreateWriter create;
  std::string_view markup = {};  ///< the format whose markup it takes, too; empty: none

  bool takesMarkupOf(std::string_view format) const { return !format.empty() && (format == name || format == markup); }
};

/// Receives an output's bytes. @return 0, or an errno value
using StreamWrite = int (*)(void* user, const void* data, std::size_t size);

/// One output of a document: its writer, and the file or stream that its bytes go to. A file is written beside its
/// target and replaces it at the end, so that the target is either complete or untouched; a device or a pipe is written
/// to directly. After a failure, all calls do nothing.
class Output : public EventSink, private ByteSink {
 public:
  /// @param format  not owned, like the other references; all must outlive the output
  /// @param path    as narrowPath has it
  Output(const Format& format, std::string path, std::size_t index, const Settings& settings, Warnings& warnings,
         Run& run);
  Output(const Format& format, StreamWrite stream, void* user, std::size_t index, const Settings& settings,
         Warnings& warnings, Run& run);
  ~Output() override;

  const Format& format() const { return format_; }

  void open();
  /// Fails instead of being opened.
  void refuse(const std::string& reason) { fail(Status::FileError, cannotWrite(reason)); }
  /// Whether both would replace the same file.
  bool sharesTargetWith(const Output& other) const;
  void write(const Event& event) override {
    if (isLive_) {
      guarded([&] { writer_->write(event); });
    }
  }
  void beginTable(const Table& table) {
    if (isLive_) {
      guarded([&] { writer_->beginTable(table); });
    }
  }
  void row(const Row& row) {
    if (isLive_) {
      guarded([&] { writer_->row(row); });
    }
  }
  void endTable() {
    if (isLive_) {
      guarded([&] { writer_->endTable(); });
    }
  }
  /// Notes that content begins, and shows the document's title before the first of it.
  /// @param isTitled  the content is a heading, which takes the title's place
  void beginContent(bool isTitled);
  /// Completes the document.
  void finish();
  /// Puts the completed file in the place of its target.
  void deliver();
  /// Writes nothing more and removes what was written beside the target.
  void abandon() noexcept;
  /// The same, and removes the writer with all that it may keep elsewhere. Not while the writer is called.
  void end() noexcept {
    abandon();
    writer_.reset();
  }

  bool isLive() const { return isLive_; }
  Status result() const;
  const char* error() const;

 private:
  bool take(const char* data, std::size_t size) override;
  bool store(const char* data, std::size_t size);
  /// Writes nothing more, but keeps the writer, which may be what failed.
  void stop() noexcept;
  void openFile();
  void prepareTarget(const std::wstring& path);
  void fail(Status status, const std::string& text);
  /// Fails with the system's reason.
  void failToWrite();
  std::string cannotWrite(const std::string& reason) const;

  template <typename Action>
  void guarded(Action&& action) {
    try {
      action();
    } catch (const std::bad_alloc&) {
      throw;
    } catch (const OutputFailure& failure) {
      fail(failure.status(), failure.what());
    } catch (const std::exception& raised) {
      fail(Status::FileError, cannotWrite(raised.what()));
    }
    if (!isLive_) {
      writer_.reset();
    }
  }

  const Format& format_;
  Run& run_;
  std::string path_;  // empty for a stream
  StreamWrite stream_ = nullptr;
  void* user_ = nullptr;

  OutputBuffer buffer_;
  FormatSettings settings_;
  OutputWarnings warnings_;
  std::unique_ptr<DocumentWriter> writer_;
  std::unique_ptr<TargetFile> target_;
  File file_;
  std::wstring newFile_;

  bool isLive_ = false;
  bool hasContent_ = false;
  Status result_ = Status::Ok;
  std::string error_;
};

}  // namespace scrivalen::document
