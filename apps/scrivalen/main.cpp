#include "command.h"
#include "system/console.h"
#include "system/interrupt.h"

int main(int argc, char** argv) {
  namespace platform = scrivalen::platform;
  platform::rememberInterrupts();
  auto arguments = platform::programArguments(argc, argv);
  if (!arguments.empty()) {
    arguments.erase(arguments.begin());
  }
  scrivalen::command::Host host;
  host.readInput = &platform::readStandardInput;
  host.writeOutput = &platform::writeStandardOutput;
  host.writeError = &platform::writeStandardError;
  host.variable = &platform::environmentVariable;
  host.wasInterrupted = &platform::wasInterrupted;
  host.errorIsTerminal = platform::isStandardErrorTerminal();
  const int status = scrivalen::command::runCommand(arguments, host);
  if (status != 0) {
    platform::endIfInterrupted();
  }
  return status;
}
