#include "shaped_prose.h"

#include <scrivalen/document.h>

#include <cstddef>

namespace scrivalen::bench {
namespace {

constexpr std::size_t kWords = 4000;
constexpr int kWordsOfAParagraph = 100;

constexpr char32_t kArabicLetters[] =
    U"\u0627\u0628\u062A\u062B\u062C\u062D\u062E\u062F\u0631\u0633\u0634\u0635"
    U"\u0637\u0639\u063A\u0641\u0642\u0643\u0644\u0645\u0646\u0647\u0648\u064A";
constexpr char32_t kDevanagariLetters[] =
    U"\u0915\u0916\u0917\u0918\u091A\u091C\u091F\u0921\u0924\u0926\u0928\u092A"
    U"\u092B\u092C\u092D\u092E\u092F\u0930\u0932\u0935\u0936\u0937\u0938\u0939";
constexpr char32_t kDevanagariVowels[] = U"\u093E\u093F\u0940\u0941\u0942\u0947\u0948\u094B";
constexpr char32_t kVirama = U'\u094D';
constexpr std::uint32_t kLetters = 24;
constexpr std::uint32_t kVowels = 8;

// Letters from U+0600 to U+0FFF.
void append(std::string& text, char32_t c) {
  if (c < 0x800) {
    text += static_cast<char>(0xC0 | c >> 6);
  } else {
    text += static_cast<char>(0xE0 | c >> 12);
    text += static_cast<char>(0x80 | (c >> 6 & 0x3F));
  }
  text += static_cast<char>(0x80 | (c & 0x3F));
}

}  // namespace

ShapedProse::ShapedProse() {
  for (std::size_t i = 0; i < kWords; ++i) {
    std::string& arabic = words_[0].emplace_back();
    for (std::uint32_t letters = 2 + random(6); letters > 0; --letters) {
      append(arabic, kArabicLetters[random(kLetters)]);
    }
    std::string& devanagari = words_[1].emplace_back();
    for (std::uint32_t syllables = 1 + random(4); syllables > 0; --syllables) {
      append(devanagari, kDevanagariLetters[random(kLetters)]);
      if (random(5) == 0) {
        append(devanagari, kVirama);
        append(devanagari, kDevanagariLetters[random(kLetters)]);
      }
      if (random(3) > 0) {
        append(devanagari, kDevanagariVowels[random(kVowels)]);
      }
    }
  }
}

// A linear congruential generator, of which the upper bits are used (Numerical Recipes' constants).
std::uint32_t ShapedProse::random(std::uint32_t count) {
  state_ = state_ * 1664525u + 1013904223u;
  return (state_ >> 16) % count;
}

const std::string& ShapedProse::nextParagraph() {
  const std::vector<std::string>& words = words_[paragraph_++ % 2];
  text_.clear();
  for (int i = 0; i < kWordsOfAParagraph; ++i) {
    text_ += i == 0 ? "" : " ";
    text_ += words[random(kWords)];
  }
  return text_;
}

std::string writeProseWithLibrary(long paragraphs, const std::string& file) {
  scrivalen_document* const document = scrivalen_new();
  scrivalen_add_file(document, file.c_str(), "pdf");
  scrivalen_set(document, "font-file", SCRIVALEN_DEVANAGARI_FONT);
  ShapedProse prose;
  for (long i = 0; i < paragraphs; ++i) {
    const std::string& text = prose.nextParagraph();
    scrivalen_paragraph(document, text.data(), text.size());
  }
  const std::string failure = scrivalen_close(document) == SCRIVALEN_OK ? "" : scrivalen_error(document);
  scrivalen_free(document);
  return failure;
}

}  // namespace scrivalen::bench
