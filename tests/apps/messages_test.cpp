#include "messages.h"

#include "command_support.h"

#include <gtest/gtest.h>

#include <thread>

namespace scrivalen::command::test {
namespace {

using namespace std::chrono_literals;

TEST(Messages, AreOneLineEachPrefixedWithTheCommandsName) {
  TestEnvironment environment;
  Messages messages(environment.get());
  messages.error("no such file");
  messages.warning("one character lost");
  EXPECT_EQ(environment.error, "scrivalen: no such file\nscrivalen: warning: one character lost\n");
}

TEST(Messages, StayOnOneLineWhateverTheFileName) {
  TestEnvironment environment;
  Messages(environment.get()).error("cannot read 'a\nb\x1b[2J'");
  EXPECT_EQ(environment.error, "scrivalen: cannot read 'a b [2J'\n");
}

TEST(Messages, PassNoControlCharacterBeyondAscii) {
  TestEnvironment environment;
  Messages messages(environment.get());
  messages.error(
      "a\xC2\x80 \xC2\x9B"
      "2J\xC2\x9F \xC2\xA0");
  messages.error("\xE2\x80\xAA\xE2\x80\xAE.\xE2\x81\xA6\xE2\x81\xA9 \xE2\x80\xA9\xE2\x80\xAF\xE2\x81\xA5\xE2\x81\xAA");
  messages.error(
      "\x9B"
      "2J \xE4 \xC2");
  EXPECT_EQ(environment.error,
            "scrivalen: a   2J  \xC2\xA0\n"
            "scrivalen:   .   \xE2\x80\xA9\xE2\x80\xAF\xE2\x81\xA5\xE2\x81\xAA\n"
            "scrivalen:  2J \xE4 \xC2\n");
}

TEST(Messages, AreColouredOnATerminal) {
  TestEnvironment environment;
  environment.get().errorIsTerminal = true;
  Messages messages(environment.get());
  messages.error("bad");
  messages.warning("so-so");
  EXPECT_EQ(environment.error, "\x1b[31mscrivalen: bad\x1b[0m\n\x1b[33mscrivalen: warning: so-so\x1b[0m\n");
}

TEST(Messages, AreNotColouredWhenNoColorIsSet) {
  TestEnvironment environment;
  environment.get().errorIsTerminal = true;
  environment.variables.emplace("NO_COLOR", "1");
  Messages(environment.get()).error("bad");
  EXPECT_EQ(environment.error, "scrivalen: bad\n");
}

TEST(Messages, AreOnlyErrorsWhenQuiet) {
  TestEnvironment environment;
  Messages messages(environment.get());
  messages.beQuiet();
  messages.warning("so-so");
  messages.error("bad");
  EXPECT_EQ(environment.error, "scrivalen: bad\n");
}

TEST(Messages, HaveNotesOnlyIfWanted) {
  TestEnvironment environment;
  environment.get().errorIsTerminal = true;
  Messages messages(environment.get());
  messages.note({"read ", "a"});
  messages.beVerbose();
  messages.note({"read ", "b\n"});
  EXPECT_EQ(environment.error, "scrivalen: read b \n");
}

TEST(Messages, ShowProgressOnATerminalAndClearItAtTheEnd) {
  TestEnvironment environment;
  environment.get().errorIsTerminal = true;
  {
    Messages messages(environment.get());
    std::this_thread::sleep_for(110ms);
    messages.progress("5 rows");
    messages.progress("6 rows");
  }
  EXPECT_EQ(environment.error, "\r\x1b[Kscrivalen: 5 rows\r\x1b[K");
}

TEST(Messages, ShowNoProgressInAFileOrWhenQuiet) {
  TestEnvironment environment;
  Messages messages(environment.get());
  std::this_thread::sleep_for(110ms);
  messages.progress("5 rows");
  environment.get().errorIsTerminal = true;
  Messages quiet(environment.get());
  quiet.beQuiet();
  std::this_thread::sleep_for(110ms);
  quiet.progress("5 rows");
  EXPECT_EQ(environment.error, "");
}

}  // namespace
}  // namespace scrivalen::command::test
