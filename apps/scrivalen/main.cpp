#include "command.h"
#include "system/console.h"
#include "system/process/interrupt.h"

#include <new>

namespace {

int runProgram(int argc, char** argv) {
  scrivalen::rememberInterrupts();
  auto arguments = scrivalen::programArguments(argc, argv);
  if (!arguments.empty()) {
    arguments.erase(arguments.begin());
  }
  scrivalen::command::Environment environment;
  environment.readInput = &scrivalen::readStandardInput;
  environment.writeOutput = &scrivalen::writeStandardOutput;
  environment.writeError = &scrivalen::writeStandardError;
  environment.variable = &scrivalen::environmentVariable;
  environment.wasInterrupted = &scrivalen::wasInterrupted;
  environment.errorIsTerminal = scrivalen::isStandardErrorTerminal();
  const int status = scrivalen::command::runCommand(arguments, environment);
  if (status != 0) {
    scrivalen::endIfInterrupted();
  }
  return status;
}

}  // namespace

int main(int argc, char** argv) {
  try {
    return runProgram(argc, argv);
  } catch (const std::bad_alloc&) {
    scrivalen::writeStandardError("scrivalen: out of memory\n");
    return 1;
  }
}
