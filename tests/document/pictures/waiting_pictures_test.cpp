#include "document/pictures/waiting_pictures.h"

#include "support/documents/pictures.h"

#include <gtest/gtest.h>

using namespace scrivalen::document;
using namespace scrivalen::test;

namespace {

std::shared_ptr<const Picture> pictureOf(std::string_view bytes) {
  std::string reason;
  return Picture::read(bytes, reason);
}

}  // namespace

TEST(WaitingPictures, KeepEqualPicturesOnce) {
  WaitingPictures pictures;
  EXPECT_EQ(pictures.add(*pictureOf(greyPng(1, 2))), 0u);
  EXPECT_EQ(pictures.add(*pictureOf(greyPng(2, 1))), 1u);
  EXPECT_EQ(pictures.add(*pictureOf(greyPng(1, 2))), 0u);
  EXPECT_EQ(pictures.size(), 2u);
}

TEST(WaitingPictures, KeepTheirPictures) {
  WaitingPictures pictures;
  pictures.add(*pictureOf(greyPng(3, 2)));
  EXPECT_EQ(pictures.read(0), greyPng(3, 2));
}

TEST(WaitingPictures, KeepInAFileWhatIsTooMuchForMemory) {
  WaitingPictures pictures(greyPng(1, 1).size() + 1);
  pictures.add(*pictureOf(greyPng(1, 1)));
  pictures.add(*pictureOf(greyJpeg(5, 6)));
  pictures.add(*pictureOf(greyPng(7, 8)));
  EXPECT_EQ(pictures.read(2), greyPng(7, 8));
  EXPECT_EQ(pictures.read(1), greyJpeg(5, 6));
  EXPECT_EQ(pictures.read(0), greyPng(1, 1));
  EXPECT_EQ(pictures.format(1), Picture::Format::Jpeg);
}
