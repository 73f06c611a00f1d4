#pragma once

#include "document/model/status.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>

namespace scrivalen::document {

/// Reports how far a document is. @return not 0 to cancel
using Progress = int (*)(void* user, std::uint64_t rows, std::uint64_t bytes);

/// What the outputs of a document share while it is written.
class Run {
 public:
  /// Marks that a function of the host is running, which must not call the document.
  class Callback {
   public:
    explicit Callback(Run& run) : run_(run), wasInCallback_(std::exchange(run.inCallback_, true)) {}
    Callback(const Callback&) = delete;
    Callback& operator=(const Callback&) = delete;
    ~Callback() { run_.inCallback_ = wasInCallback_; }

   private:
    Run& run_;
    bool wasInCallback_;
  };

  void setProgress(Progress progress, void* user) {
    progress_ = progress;
    user_ = user;
  }
  bool hasProgress() const { return progress_ != nullptr; }
  bool isInCallback() const { return inCallback_; }

  void countOutput() { ++outputs_; }
  void discountOutput() { --outputs_; }
  /// Whether an output is left that takes content.
  bool isGoing() const { return outputs_ > 0 && !isCancelled_ && !isOutOfMemory_; }

  void countRow() { ++rows_; }
  void countBytes(std::size_t bytes) { bytes_ += bytes; }
  /// Calls the host. @return false when the document is, or was, cancelled
  bool report();
  bool isCancelled() const { return isCancelled_; }

  /// Keeps the first failure.
  void fail(Status status, const std::string& text);
  /// The same when memory runs out; nothing is written after it.
  void runOutOfMemory() noexcept;
  /// Keeps as the first failure that memory ran out for one output.
  void keepOutOfMemory() noexcept;
  bool isOutOfMemory() const { return isOutOfMemory_; }

  Status result() const { return result_; }
  /// UTF-8; empty without a failure.
  const char* text() const;

 private:
  Progress progress_ = nullptr;
  void* user_ = nullptr;
  std::size_t outputs_ = 0;
  std::uint64_t rows_ = 0;
  std::uint64_t bytes_ = 0;
  bool inCallback_ = false;
  bool isCancelled_ = false;
  bool isOutOfMemory_ = false;
  Status result_ = Status::Ok;
  std::string text_;
};

inline constexpr const char* kNoMemory = "there is not enough memory";
inline constexpr const char* kCancelled = "the document was cancelled";

}  // namespace scrivalen::document
