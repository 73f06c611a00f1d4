#pragma once

namespace scrivalen {

using StopQuery = bool (*)();

/// Sets the query whether long-running work is to stop; null: it never is. Both this function and the query may be
/// called from any thread.
void setStopQuery(StopQuery query) noexcept;

/// Whether a query is set, whatever it returns now.
bool canStop() noexcept;

/// Whether long-running work is to stop. Cheap enough to be called for every page.
bool isStopRequested() noexcept;

}  // namespace scrivalen
