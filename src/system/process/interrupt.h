#pragma once

namespace scrivalen {

/// From now on, a request to end the program (Ctrl+C, a closed console, SIGINT, SIGTERM, SIGHUP) is only recorded,
/// however often it comes, so that the program can clean up; a blocking system call is interrupted. Requests that the
/// program was started to ignore, as by nohup, stay ignored. A closed pipe or a file that grows too large no longer
/// ends the program: the write fails.
void rememberInterrupts();

/// Whether there was such a request.
bool wasInterrupted();

/// Ends the program as the first request would have; does nothing without one.
void endIfInterrupted();

}  // namespace scrivalen
