#include "document/pictures/waiting_pictures.h"
#include "support/documents/pictures.h"
#include "support/files.h"
#include "system/files/files.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <stdexcept>

using namespace scrivalen::document;
using namespace scrivalen::test;

namespace {

struct WaitingPicturesPosix : testing::Test {
  WaitingPicturesPosix() {
    const char* const usual = std::getenv("TMPDIR");
    kept_ = usual ? usual : "/tmp";
  }
  ~WaitingPicturesPosix() override { ::setenv("TMPDIR", kept_.c_str(), 1); }

  static std::shared_ptr<const Picture> picture() {
    std::string reason;
    return Picture::read(greyPng(9, 9), reason);
  }

  const TemporaryFolder temporary;

 private:
  std::string kept_;
};

}  // namespace

TEST_F(WaitingPicturesPosix, LeaveNoFile) {
  ::setenv("TMPDIR", scrivalen::narrowPath(temporary.path()).c_str(), 1);
  {
    WaitingPictures pictures(0);
    pictures.add(*picture());
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(asPath(temporary.path())), {}), 1);
  }
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(asPath(temporary.path())), {}), 0);
}

TEST_F(WaitingPicturesPosix, FailWithoutAFolderForTheirFile) {
  const std::string missing = scrivalen::narrowPath(temporary.path()) + "/missing";
  ::setenv("TMPDIR", missing.c_str(), 1);
  WaitingPictures pictures(0);
  try {
    pictures.add(*picture());
    FAIL() << "nothing was raised";
  } catch (const std::runtime_error& error) {
    EXPECT_EQ(error.what(),
              "no folder can be created for its temporary file in '" + missing + "': No such file or directory");
  }
}
