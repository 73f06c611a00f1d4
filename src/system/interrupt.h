#pragma once

namespace scrivalen::platform {

/// From now on a request to end the program (Ctrl+C, a closed console, SIGINT, SIGTERM, SIGHUP) is only remembered, so
/// that the program can tidy up; a second one ends it.
void rememberInterrupts();

/// Whether there was such a request.
bool wasInterrupted();

}  // namespace scrivalen::platform
