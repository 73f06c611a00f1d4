#pragma once

#include "document/model/writer.h"
#include "output/host_handlers.h"
#include "system/files/work_folder.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

namespace scrivalen::document {

/// The file of a writer that cannot write into an output. It is made in a folder for this user alone and copied into
/// the output at the end. What is logged about it becomes warnings of the output, and its time is the document's.
class PrivateFile : private HostStandIn {
 public:
  explicit PrivateFile(const WriterContext& context)
      : out_(context.out), warnings_(context.warnings), time_(context.settings.clock()) {}
  PrivateFile(const PrivateFile&) = delete;
  PrivateFile& operator=(const PrivateFile&) = delete;

  /// Creates the folder. @param name  the file's
  void create(std::wstring_view name);
  const std::wstring& path() const { return path_; }

  /// Runs code that writes the file, in the place of the host.
  template <typename Action>
  auto with(Action&& action) {
    const HostScope scope(*this);
    return std::forward<Action>(action)();
  }

  /// Raises why the file is incomplete.
  /// @param error  the text of the report that wrote it
  [[noreturn]] void fail(std::wstring_view error) const;
  /// Copies the file, which is complete and closed, into the output, and removes it.
  void deliver();

 private:
  void log(const wchar_t* line) override;
  std::int64_t time() const override { return time_; }
  void warn(std::wstring_view line);
  void copy();

  OutputBuffer& out_;
  OutputWarnings& warnings_;
  std::int64_t time_;
  WorkFolder folder_;
  std::wstring path_;
  bool hasLostLine_ = false;
};

}  // namespace scrivalen::document
