#pragma once

namespace scrivalen {

using StopQuery = bool (*)();

/// Sets what tells whether work that takes long is to stop; null: nothing stops it. May be called from any thread, and
/// so may the query be.
void setStopQuery(StopQuery query) noexcept;

/// Whether there is such a query, whatever it says now.
bool canStop() noexcept;

/// Whether work that takes long is to stop. Cheap enough to be asked for every page.
bool isStopRequested() noexcept;

}  // namespace scrivalen
