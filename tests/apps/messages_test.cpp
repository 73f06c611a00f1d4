#include "messages.h"

#include "command_support.h"

#include <gtest/gtest.h>

#include <thread>

namespace scrivalen::command::test {
namespace {

using namespace std::chrono_literals;

TEST(Messages, AreOneLineEachPrefixedWithTheCommandsName) {
  TestHost host;
  Messages messages(host.host());
  messages.error("no such file");
  messages.warning("one character lost");
  EXPECT_EQ(host.error, "scrivalen: no such file\nscrivalen: warning: one character lost\n");
}

TEST(Messages, StayOnOneLineWhateverTheFileName) {
  TestHost host;
  Messages(host.host()).error("cannot read 'a\nb\x1b[2J'");
  EXPECT_EQ(host.error, "scrivalen: cannot read 'a b [2J'\n");
}

TEST(Messages, AreColouredOnATerminal) {
  TestHost host;
  host.host().errorIsTerminal = true;
  Messages messages(host.host());
  messages.error("bad");
  messages.warning("so-so");
  EXPECT_EQ(host.error, "\x1b[31mscrivalen: bad\x1b[0m\n\x1b[33mscrivalen: warning: so-so\x1b[0m\n");
}

TEST(Messages, AreNotColouredWhenNoColorIsSet) {
  TestHost host;
  host.host().errorIsTerminal = true;
  host.variables.emplace("NO_COLOR", "1");
  Messages(host.host()).error("bad");
  EXPECT_EQ(host.error, "scrivalen: bad\n");
}

TEST(Messages, AreOnlyErrorsWhenQuiet) {
  TestHost host;
  Messages messages(host.host());
  messages.beQuiet();
  messages.warning("so-so");
  messages.error("bad");
  EXPECT_EQ(host.error, "scrivalen: bad\n");
}

TEST(Messages, ShowProgressOnATerminalAndClearItAtTheEnd) {
  TestHost host;
  host.host().errorIsTerminal = true;
  {
    Messages messages(host.host());
    std::this_thread::sleep_for(110ms);
    messages.progress("5 rows");
    messages.progress("6 rows");
  }
  EXPECT_EQ(host.error, "\r\x1b[Kscrivalen: 5 rows\r\x1b[K");
}

TEST(Messages, ShowNoProgressInAFileOrWhenQuiet) {
  TestHost host;
  Messages messages(host.host());
  std::this_thread::sleep_for(110ms);
  messages.progress("5 rows");
  host.host().errorIsTerminal = true;
  Messages quiet(host.host());
  quiet.beQuiet();
  std::this_thread::sleep_for(110ms);
  quiet.progress("5 rows");
  EXPECT_EQ(host.error, "");
}

}  // namespace
}  // namespace scrivalen::command::test
