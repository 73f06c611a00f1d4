#include "support/documents/pdf_structure.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <set>

namespace scrivalen::test {
namespace {

constexpr std::size_t kNowhere = std::string_view::npos;
constexpr std::size_t kCatalog = 1;
constexpr std::size_t kPages = 2;
constexpr std::string_view kHead = "%PDF-1.4\n%\xE2\xE3\xCF\xD3\n";

std::optional<std::size_t> numberIn(std::string_view text) {
  std::size_t number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  return error == std::errc() ? std::optional(number) : std::nullopt;
}

std::string_view from(std::string_view text, std::size_t at, std::size_t size = kNowhere) {
  return text.substr(std::min(at, text.size()), size);
}

bool isDigit(char c) { return c >= '0' && c <= '9'; }

// The numbers of the objects that a value refers to.
std::vector<std::size_t> referencesIn(std::string_view value) {
  constexpr std::string_view kReference = " 0 R";
  std::vector<std::size_t> found;
  for (std::size_t at = value.find(kReference); at != kNowhere; at = value.find(kReference, at + 1)) {
    std::size_t begin = at;
    while (begin > 0 && isDigit(value[begin - 1])) {
      --begin;
    }
    found.push_back(numberIn(value.substr(begin)).value_or(kNowhere));
  }
  return found;
}

// Returns the position of the closing parenthesis of the escaped string that begins at `at`.
std::size_t endOfString(std::string_view text, std::size_t at) {
  while (at < text.size() && text[at] != ')') {
    at += text[at] == '\\' ? 2 : 1;
  }
  return at;
}

std::string named(const char* what, std::size_t number) { return what + (' ' + std::to_string(number)); }

}  // namespace

PdfStructure::PdfStructure(std::string_view bytes, bool conforming) : bytes_(bytes), conforming_(conforming) {
  constexpr std::string_view kStart = "startxref\r\n";
  expect(bytes.starts_with(kHead), "the first two lines");
  expect(bytes.ends_with("\r\n%%EOF"), "the end of the file");
  const std::size_t announced = bytes.rfind(kStart);
  const auto start = announced == kNowhere ? std::nullopt : numberIn(bytes.substr(announced + kStart.size()));
  if (!start || !from(bytes, *start).starts_with("xref\r\n0 ")) {
    expect(false, "startxref does not lead to the table");
    return;
  }
  readTable(*start);
  checkReferences();
  checkDestinations();
  checkPages();
  checkAnnotations();
  checkOutline();
}

void PdfStructure::expect(bool good, const std::string& problem) {
  if (!good) {
    problems_.push_back(problem);
  }
}

void PdfStructure::readTable(std::size_t start) {
  constexpr std::size_t kLine = 20;
  constexpr std::string_view kFree = "0000000000 65535 f\r\n";
  const std::string_view table = bytes_.substr(start);
  const std::size_t announced = numberIn(from(table, 8)).value_or(0);
  const std::string head = "xref\r\n0 " + std::to_string(announced) + "\r\n";
  expect(table.starts_with(head) && from(table, head.size()).starts_with(kFree), "the head of the table");
  end_ = kHead.size();
  std::size_t at = head.size() + kLine;
  while (count_ + 1 < announced && readLine(count_ + 1, from(table, at, kLine))) {
    ++count_;
    at += kLine;
  }
  expect(count_ > 0 && count_ + 1 == announced, "the number of lines of the table");
  expect(end_ == start, "the objects do not reach to the table");
  checkTail(start + at, start);
}

void PdfStructure::checkTail(std::size_t afterTable, std::size_t start) {
  const std::string last = std::to_string(count_);
  const bool isTitled = conforming_ && object(count_).starts_with(last + " 0 obj\r\n<<\r\n/Title (");
  const std::string tail = "trailer\r\n<<\r\n/Size " + std::to_string(count_ + 1) + "\r\n/Root 1 0 R\r\n" +
                           (isTitled ? "/Info " + last + " 0 R\r\n" : "") + ">>\r\nstartxref\r\n" +
                           std::to_string(start) + "\r\n%%EOF";
  expect(from(bytes_, afterTable) == tail, "the trailer");
}

bool PdfStructure::readLine(std::size_t number, std::string_view line) {
  constexpr std::size_t kDigits = 10;
  const bool good = line.size() == 20 && std::all_of(line.begin(), line.begin() + kDigits, isDigit) &&
                    line.substr(kDigits) == " 00000 n\r\n";
  expect(good, named("line", number) + " of the table");
  if (good) {
    readObject(number, numberIn(line).value_or(kNowhere));
  }
  return good;
}

// The root of an outline without linked entries is not in the file; its table line holds the offset of the next object.
bool PdfStructure::isUnwrittenOutline(std::size_t number) const {
  return !conforming_ && number != 0 && objects_.count(number) == 0 && reference(kCatalog, "Outlines") == number;
}

void PdfStructure::readObject(std::size_t number, std::size_t offset) {
  const std::string head = std::to_string(number) + " 0 obj\r\n<<\r\n";
  const std::string name = named("object", number);
  expect(offset == end_, name + " does not begin where the one in front of it ends");
  if (!from(bytes_, offset).starts_with(head)) {
    expect(isUnwrittenOutline(number), "the offset of " + name);
    return;
  }
  Object object;
  const std::size_t end = readStream(object, readEntries(object, offset + head.size()), number);
  object.text = bytes_.substr(offset, end - offset);
  end_ = end;
  objects_[number] = object;
}

// Reads the dictionary and returns its end.
std::size_t PdfStructure::readEntries(Object& object, std::size_t at) const {
  while (from(bytes_, at).starts_with('/')) {
    const std::size_t blank = std::min(bytes_.find(' ', at), bytes_.size() - 1);
    const std::size_t end = endOfValue(blank + 1);
    object.entries[bytes_.substr(at + 1, blank - at - 1)] = bytes_.substr(blank + 1, end - blank - 1);
    at = end + 2;
    // Arrays and dictionaries end with a line of their own.
    at += from(bytes_, at, 2) == "\r\n" ? 2 : 0;
  }
  return std::min(at, bytes_.size());
}

// Returns the end of the value that begins at `at`: the first line end outside its brackets.
std::size_t PdfStructure::endOfValue(std::size_t at) const {
  const std::string_view value = from(bytes_, at);
  if (value.starts_with('(')) {
    // An escaped text has no line ends of its own; those of an unescaped one are not followed by an entry.
    return std::min(bytes_.find(conforming_ ? ")\r\n" : ")\r\n/", at), bytes_.size() - 1) + 1;
  }
  if (value.starts_with('/')) {
    return std::min(bytes_.find("\r\n", at), bytes_.size());
  }
  int depth = 0;
  for (std::size_t i = 0; i < value.size(); ++i) {
    const std::string_view two = value.substr(i, 2);
    if (two == "<<" || two == ">>") {
      depth += two == "<<" ? 1 : -1;
      ++i;
    } else if (value[i] == '[' || value[i] == ']') {
      depth += value[i] == '[' ? 1 : -1;
    } else if (value[i] == '(') {
      i = std::min(endOfString(value, i), value.size() - 1);
    } else if (depth == 0 && two == "\r\n") {
      return at + i;
    }
  }
  return bytes_.size();
}

// Reads what follows the entries and returns the object's end.
std::size_t PdfStructure::readStream(Object& object, std::size_t at, std::size_t number) {
  constexpr std::string_view kBegin = ">>\r\nstream\r\n";
  std::string_view end = ">>\r\nendobj\r\n\r\n";
  if (from(bytes_, at).starts_with(kBegin)) {
    end = "\r\nendstream\r\nendobj\r\n\r\n";
    at += kBegin.size();
    const std::size_t announced = numberIn(object.entries["Length"]).value_or(kNowhere);
    object.hasStream = true;
    object.stream = from(bytes_, at, conforming_ ? announced : announced / 2);
    expect(conforming_ || announced % 2 == 0, "the odd length of" + named(" stream", number));
    at += object.stream.size();
  }
  expect(from(bytes_, at).starts_with(end),
         (object.hasStream ? "the length of" : "the end of") + named(" object", number));
  return std::min(at + end.size(), bytes_.size());
}

std::string_view PdfStructure::object(std::size_t number) const {
  const auto found = objects_.find(number);
  return found == objects_.end() ? std::string_view() : found->second.text;
}

std::string_view PdfStructure::entry(std::size_t number, std::string_view key) const {
  const auto object = objects_.find(number);
  if (object == objects_.end()) {
    return {};
  }
  const auto found = object->second.entries.find(key);
  return found == object->second.entries.end() ? std::string_view() : found->second;
}

std::size_t PdfStructure::reference(std::size_t number, std::string_view key) const {
  const auto found = referencesIn(entry(number, key));
  return found.empty() ? 0 : found.front();
}

std::vector<std::size_t> PdfStructure::allOf(std::string_view type) const {
  std::vector<std::size_t> found;
  for (const auto& [number, object] : objects_) {
    if (isOf(number, type)) {
      found.push_back(number);
    }
  }
  return found;
}

void PdfStructure::checkReferences() {
  for (const auto& [number, object] : objects_) {
    for (const auto& [key, value] : object.entries) {
      const bool isWord = value.starts_with('(') || value.starts_with('/');
      if (!isWord) {
        checkReferencesIn(number, value);
      }
    }
  }
}

void PdfStructure::checkReferencesIn(std::size_t number, std::string_view value) {
  for (const std::size_t target : referencesIn(value)) {
    const bool isNowhere = target == 0 && !conforming_;
    expect(objects_.count(target) > 0 || isNowhere || (number == kCatalog && isUnwrittenOutline(target)),
           named("object", number) + named(" refers to", target) + ", which is not there");
  }
}

void PdfStructure::checkDestinations() {
  for (const auto& [number, object] : objects_) {
    if (const auto found = object.entries.find("Dest"); found != object.entries.end()) {
      checkDestination(number, found->second);
    }
  }
}

// A page, a place on it, and an unchanged zoom.
void PdfStructure::checkDestination(std::size_t number, std::string_view value) {
  const auto targets = referencesIn(value);
  const bool leadsToPage = targets.size() == 1 && (isOf(targets[0], "/Page") || (targets[0] == 0 && !conforming_));
  const bool isComplete = value.find(" 0 R\r\n/XYZ\r\n") != kNowhere && value.ends_with("\r\n0\r\n]") &&
                          std::count(value.begin(), value.end(), '\n') == 5;
  expect(leadsToPage && isComplete, "the destination of" + named(" object", number));
}

void PdfStructure::checkPages() {
  expect(isOf(kCatalog, "/Catalog") && reference(kCatalog, "Pages") == kPages, "the catalog");
  expect(isOf(kPages, "/Pages"), "the page tree");
  pages_ = referencesIn(entry(kPages, "Kids"));
  expect(numberIn(entry(kPages, "Count")) == pages_.size(), "the number of pages");
  auto sorted = pages_;
  std::sort(sorted.begin(), sorted.end());
  expect(sorted == allOf("/Page"), "the page tree does not list each page once");
  const auto fonts = allOf("/Font");
  for (const std::size_t page : pages_) {
    checkPage(page);
    checkFonts(page, fonts);
  }
}

void PdfStructure::checkPage(std::size_t page) {
  const auto content = objects_.find(reference(page, "Contents"));
  expect(reference(page, "Parent") == kPages, "the parent of" + named(" page", page));
  expect(content != objects_.end() && content->second.hasStream, "the content of" + named(" page", page));
  expect(entry(page, "MediaBox").starts_with("[0 0 "), "the media box of" + named(" page", page));
}

void PdfStructure::checkFonts(std::size_t page, const std::vector<std::size_t>& fonts) {
  for (const std::size_t font : fonts) {
    const std::string listed = "\r\n" + std::string(entry(font, "Name")) + ' ' + std::to_string(font) + " 0 R\r\n";
    expect(entry(page, "Resources").find(listed) != kNowhere, named("page", page) + named(" does not list font", font));
  }
}

void PdfStructure::checkAnnotations() {
  std::vector<std::size_t> listed;
  for (const std::size_t page : pages_) {
    const auto annotations = referencesIn(entry(page, "Annots"));
    listed.insert(listed.end(), annotations.begin(), annotations.end());
  }
  std::sort(listed.begin(), listed.end());
  expect(listed == allOf("/Annot"), "the pages do not list each annotation once");
}

void PdfStructure::checkOutline() {
  const std::size_t root = reference(kCatalog, "Outlines");
  const std::size_t linked = objects_.count(root) > 0 ? checkEntriesOf(root) : 0;
  expect(objects_.count(root) == 0 || isOf(root, "/Outlines"), "the outline");
  // In the classic form an entry nested too deep belongs to no tree.
  expect(!conforming_ || linked == allOf("/Outline").size(), "the outline does not have each of its entries");
}

// Follows the whole tree and returns its number of entries.
std::size_t PdfStructure::checkEntriesOf(std::size_t root) {
  std::set<std::size_t> seen;
  std::vector<OutlineLevel> levels = {{root, reference(root, "First")}};
  for (;;) {
    OutlineLevel& level = levels.back();
    if (const std::size_t entry = level.entry; entry != 0) {
      const std::string name = named("outline entry", entry);
      if (!seen.insert(entry).second) {
        expect(false, name + " is there twice");
        return seen.size();
      }
      expect(isOf(entry, "/Outline") && reference(entry, "Parent") == level.node, name + ": its parent");
      expect(reference(entry, "Prev") == level.previous, name + ": the one in front of it");
      ++level.own;
      level.previous = entry;
      level.entry = reference(entry, "Next");
      levels.push_back({entry, reference(entry, "First")});
      continue;
    }
    const std::size_t all = finishLevel(level);
    levels.pop_back();
    if (levels.empty()) {
      return all;
    }
    levels.back().all += all;
  }
}

// Returns the number of entries below the node.
std::size_t PdfStructure::finishLevel(const OutlineLevel& level) {
  const std::string name = named("object", level.node);
  const std::size_t all = level.own + level.all;
  const bool countsAll = conforming_ || isOf(level.node, "/Outlines");
  const std::size_t announced = numberIn(entry(level.node, "Count")).value_or(0);
  expect(reference(level.node, "Last") == level.previous, name + ": its last entry");
  expect(announced == (countsAll ? all : level.own), name + ": its count");
  return all;
}

std::string_view PdfStructure::content(std::size_t page) const {
  const auto object = objects_.find(page < pages_.size() ? reference(pages_[page], "Contents") : 0);
  return object == objects_.end() ? std::string_view() : object->second.stream;
}

}  // namespace scrivalen::test
