#pragma once

namespace scrivalen {

using StopQuery = bool (*)();

/// Sets the query whether long-running work is to stop; null: it never is. Both this function and the query may be
/// called from any thread.
void setStopQuery(StopQuery query) noexcept;

/// While it exists, long-running work of this thread is to stop also when another query says so.
class StopScope {
 public:
  using Query = bool (*)(void* user);

  StopScope(Query query, void* user) noexcept;
  StopScope(const StopScope&) = delete;
  StopScope& operator=(const StopScope&) = delete;
  ~StopScope();

  bool isStopRequested() const { return query_(user_) || (before_ && before_->isStopRequested()); }

 private:
  Query query_;
  void* user_;
  StopScope* before_;
};

/// Whether a query is set, whatever it returns now.
bool canStop() noexcept;

/// Whether long-running work is to stop. Cheap enough to be called for every page.
bool isStopRequested() noexcept;

}  // namespace scrivalen
