#include "support/pdf/pdf_content.h"

#include "text/utf.h"
#include "text/windows_1252.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <optional>
#include <utility>

namespace scrivalen::test {
namespace {

using Kind = PdfValue::Kind;

constexpr int kDeepestForm = 4;

struct Font {
  std::string name;
  bool isComposite = false;
  std::map<std::string, std::string> texts;                    // of the codes of a composite font
  std::vector<std::pair<std::string, std::string>> codeSpace;  // its ranges
};

// x' = a x + c y + e, y' = b x + d y + f
struct Matrix {
  double a = 1, b = 0, c = 0, d = 1, e = 0, f = 0;

  Matrix operator*(const Matrix& after) const {
    return {a * after.a + b * after.c, a * after.b + b * after.d,           c * after.a + d * after.c,
            c * after.b + d * after.d, e * after.a + f * after.c + after.e, e * after.b + f * after.d + after.f};
  }
  double x(double px, double py) const { return a * px + c * py + e; }
  double y(double px, double py) const { return b * px + d * py + f; }
};

// The pairs of strings in the blocks of a CMap that begin with a word.
std::vector<std::pair<std::string, std::string>> readPairs(const std::string& map, std::string_view begin) {
  std::vector<std::pair<std::string, std::string>> pairs;
  std::optional<std::string> first;
  bool isPair = false;
  PdfScanner scanner(map);
  while (const auto value = scanner.next()) {
    if (value->kind == Kind::Word) {
      isPair = value->text == begin;
    } else if (isPair && value->kind == Kind::String && !first) {
      first = value->text;
    } else if (isPair && value->kind == Kind::String) {
      pairs.emplace_back(*first, value->text);
      first.reset();
    }
  }
  return pairs;
}

// The texts of codes (PDF 1.7, 9.10.3).
std::map<std::string, std::string> readUnicodes(const std::string& map) {
  std::map<std::string, std::string> texts;
  for (const auto& [code, text] : readPairs(map, "beginbfchar")) {
    texts[code] = pdfTextOf("\xFE\xFF" + text);
  }
  return texts;
}

// Whether a text begins with a code of a range, byte by byte (PDF 1.7, 9.7.6.2).
bool hasCodeOf(const std::pair<std::string, std::string>& range, std::string_view text) {
  const auto& [low, high] = range;
  if (text.size() < low.size() || low.size() != high.size()) {
    return false;
  }
  for (std::size_t i = 0; i < low.size(); ++i) {
    const auto byte = static_cast<unsigned char>(text[i]);
    if (byte < static_cast<unsigned char>(low[i]) || byte > static_cast<unsigned char>(high[i])) {
      return false;
    }
  }
  return true;
}

class ContentReader {
 public:
  ContentReader(const PdfFileReader& file, std::vector<std::string>& problems) : file_(file), problems_(problems) {}

  void read(std::string_view content, const PdfValue& resources, int depth);
  PdfContent take() { return std::move(content_); }

 private:
  struct State {
    Matrix matrix;
    std::uint32_t color = 0;
    std::string font;
    double size = 0;
  };

  void run(const std::string& word);
  bool runText(const std::string& word);
  bool runPath(const std::string& word);
  void fill();
  void draw(const std::string& name);
  void beginMarked(const PdfValue& properties);
  void endMarked();
  void moveLine(double x, double y);
  void show(const PdfValue& array);
  void add(const std::string& text);
  std::string decoded(const std::string& bytes);
  const Font* font();
  PdfValue resolved(const PdfValue& value) const;
  double number(std::size_t index) const { return index < operands_.size() ? operands_[index].number : 0; }
  std::uint32_t colorOf(std::array<double, 3> parts) const;
  void problem(const std::string& text) { problems_.push_back(text); }

  const PdfFileReader& file_;
  std::vector<std::string>& problems_;
  PdfContent content_;
  std::vector<PdfValue> operands_;
  std::vector<PdfArea> path_;
  std::vector<State> states_{1};
  std::map<int, Font> fonts_;
  PdfValue resources_;
  int depth_ = 0;
  bool isInText_ = false;
  bool isNewText_ = true;
  double lineX_ = 0;
  double lineY_ = 0;
  std::vector<bool> marked_;  // whether each of the open ones gives its own text
  int hidden_ = 0;            // of the open ones, those that do
};

PdfValue ContentReader::resolved(const PdfValue& value) const {
  return value.reference() == 0 ? value : pdfValueOf(file_.object(value.reference()));
}

void ContentReader::read(std::string_view content, const PdfValue& resources, int depth) {
  const PdfValue outer = std::exchange(resources_, resolved(resources));
  const bool outerText = std::exchange(isInText_, false);
  operands_.clear();
  const std::size_t states = states_.size();
  depth_ = depth;
  PdfScanner scanner(content);
  while (auto value = scanner.next()) {
    if (value->kind == Kind::Word) {
      run(value->text);
      operands_.clear();
    } else {
      operands_.push_back(std::move(*value));
    }
  }
  if (scanner.isWrong() || isInText_ || states_.size() != states || !marked_.empty()) {
    problem("a content stream is not well-formed");
    marked_.clear();
    hidden_ = 0;
  }
  states_.resize(states);
  resources_ = outer;
  isInText_ = outerText;
  depth_ = depth - 1;
}

std::uint32_t ContentReader::colorOf(std::array<double, 3> parts) const {
  std::uint32_t color = 0;
  for (const double part : parts) {
    color = color << 8 | static_cast<std::uint32_t>(std::lround(part * 255));
  }
  return color;
}

void ContentReader::run(const std::string& word) {
  State& state = states_.back();
  if (word == "q") {
    states_.push_back(State(state));
  } else if (word == "Q") {
    if (states_.size() > 1) {
      states_.pop_back();
    } else {
      problem("a state is restored that was not saved");
    }
  } else if (word == "cm") {
    state.matrix = Matrix{number(0), number(1), number(2), number(3), number(4), number(5)} * state.matrix;
  } else if (word == "g") {
    state.color = colorOf({number(0), number(0), number(0)});
  } else if (word == "rg") {
    state.color = colorOf({number(0), number(1), number(2)});
  } else if (word == "Do" && !operands_.empty()) {
    draw(operands_[0].text);
  } else if (word == "BMC") {
    beginMarked({});
  } else if (word == "BDC" && operands_.size() == 2) {
    beginMarked(operands_[1]);
  } else if (word == "EMC") {
    endMarked();
  } else if (!runText(word) && !runPath(word)) {
    problem("an unknown operator: " + word);
  }
}

bool ContentReader::runText(const std::string& word) {
  State& state = states_.back();
  if (word == "BT" || word == "ET") {
    isInText_ = word == "BT";
    isNewText_ = true;
    lineX_ = lineY_ = 0;
  } else if (word == "Tf" && operands_.size() == 2) {
    state.font = operands_[0].text;
    state.size = operands_[1].number;
    isNewText_ = true;
  } else if (word == "Td") {
    moveLine(number(0), number(1));
  } else if ((word == "Tj" || word == "TJ") && !operands_.empty()) {
    show(operands_[0]);
  } else {
    return word == "Ts" || word == "Tw" || word == "Tc";
  }
  return true;
}

bool ContentReader::runPath(const std::string& word) {
  const Matrix& matrix = states_.back().matrix;
  if (word == "re") {
    path_.push_back({matrix.x(number(0), number(1)), matrix.y(number(0), number(1)), number(2) * matrix.a,
                     number(3) * matrix.d, 0});
  } else if (word == "f") {
    fill();
  } else {
    return false;
  }
  return true;
}

void ContentReader::fill() {
  for (PdfArea& area : path_) {
    area.color = states_.back().color;
    content_.areas.push_back(area);
  }
  path_.clear();
}

void ContentReader::draw(const std::string& name) {
  const int number = resolved(resources_.at("XObject")).at(name).reference();
  const PdfValue object = pdfValueOf(file_.object(number));
  if (object.at("Subtype").isName("Image")) {
    const Matrix& matrix = states_.back().matrix;
    content_.images.push_back({number, matrix.x(0, 0), matrix.y(0, 0), matrix.a, matrix.d});
  } else if (object.at("Subtype").isName("Form") && depth_ < kDeepestForm) {
    states_.push_back(State(states_.back()));
    read(file_.stream(number), object.at("Resources"), depth_ + 1);
    states_.pop_back();
  } else {
    problem("the page has no form or image " + name);
  }
}

void ContentReader::beginMarked(const PdfValue& properties) {
  const bool givesText = properties.has("ActualText");
  if (givesText && hidden_ == 0) {
    add(pdfTextOf(properties.at("ActualText").text));
  }
  marked_.push_back(givesText);
  hidden_ += givesText ? 1 : 0;
}

void ContentReader::endMarked() {
  if (marked_.empty()) {
    return problem("marked content ends that did not begin");
  }
  hidden_ -= marked_.back() ? 1 : 0;
  marked_.pop_back();
}

void ContentReader::moveLine(double x, double y) {
  lineX_ += x;
  lineY_ += y;
  isNewText_ = true;
}

void ContentReader::show(const PdfValue& array) {
  if (!isInText_) {
    problem("text outside a text object");
  }
  std::string text = decoded(array.text);
  for (const PdfValue& item : array.items) {
    text += decoded(item.text);
  }
  add(hidden_ > 0 ? "" : text);
}

void ContentReader::add(const std::string& text) {
  if (std::exchange(isNewText_, false)) {
    const State& state = states_.back();
    const Font* const used = font();
    content_.texts.push_back({"", used == nullptr ? "" : used->name, std::abs(state.size * state.matrix.d),
                              state.matrix.x(lineX_, lineY_), state.matrix.y(lineX_, lineY_), state.color});
  }
  content_.texts.back().text += text;
}

std::string ContentReader::decoded(const std::string& bytes) {
  const Font* const used = font();
  std::string text;
  if (used == nullptr || !used->isComposite) {
    for (const char c : bytes) {
      char utf8[4];
      const char32_t character = fromWindows1252(static_cast<unsigned char>(c)).value_or(kReplacement);
      text.append(utf8, putUtf8(character, utf8));
    }
    return text;
  }
  for (std::string_view left = bytes; !left.empty();) {
    const auto range = std::find_if(used->codeSpace.begin(), used->codeSpace.end(),
                                    [left](const auto& codes) { return hasCodeOf(codes, left); });
    if (range == used->codeSpace.end()) {
      problem("a string of a composite font has bytes that are no code");
      break;
    }
    const auto found = used->texts.find(std::string(left.substr(0, range->first.size())));
    text += found == used->texts.end() ? "" : found->second;
    left.remove_prefix(range->first.size());
  }
  return text;
}

const Font* ContentReader::font() {
  const int number = resolved(resources_.at("Font")).at(states_.back().font).reference();
  if (number == 0) {
    problem("the page has no font '" + states_.back().font + "'");
    return nullptr;
  }
  const auto [found, isNew] = fonts_.try_emplace(number);
  if (isNew) {
    const PdfValue object = pdfValueOf(file_.object(number));
    const std::string& name = object.at("BaseFont").text;
    found->second.name = name.substr(name.find('+') + 1);
    found->second.isComposite = object.at("Subtype").isName("Type0");
    if (found->second.isComposite) {
      found->second.texts = readUnicodes(file_.stream(object.at("ToUnicode").reference()));
      found->second.codeSpace = readPairs(file_.stream(object.at("Encoding").reference()), "begincodespacerange");
    }
  }
  return &found->second;
}

}  // namespace

PdfContent readPdfContent(const PdfFileReader& file, std::string_view content, const PdfValue& resources,
                          std::vector<std::string>& problems) {
  ContentReader reader(file, problems);
  reader.read(content, resources, 0);
  return reader.take();
}

}  // namespace scrivalen::test
