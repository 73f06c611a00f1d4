#pragma once

namespace scrivalen {

/// From now on a request to end the program (Ctrl+C, a closed console, SIGINT, SIGTERM, SIGHUP) is only remembered,
/// however often it comes, so that the program can tidy up; a call of the system that waits is broken off. Requests
/// that the program was started to ignore, as nohup does it, stay ignored. A reader that is gone and a file that grows
/// too large no longer end the program: the write fails.
void rememberInterrupts();

/// Whether there was such a request.
bool wasInterrupted();

/// Ends the program the way the first request would have done it; does nothing without one.
void endIfInterrupted();

}  // namespace scrivalen
