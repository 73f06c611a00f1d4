#include "readers/front_matter/front_matter.h"

#include "readers/front_matter/yaml_events.h"
#include "text/ascii.h"

#include <algorithm>
#include <array>

namespace scrivalen::command {
namespace {

// Front matter is written by hand. A longer block is most likely a text between two rules.
constexpr std::size_t kLongest = 256 * 1024;

struct Place {
  std::size_t content = 0;  // where the lines between the fences begin
  std::size_t fence = 0;    // where the last line begins
  std::size_t end = 0;      // of the block
};

std::size_t nextLine(std::string_view text, std::size_t from) {
  const std::size_t at = text.find('\n', from);
  return at == text.npos ? text.size() : at + 1;
}

std::string_view withoutBlanksAtEnd(std::string_view line) {
  return line.substr(0, line.find_last_not_of(" \t\r\n") + 1);
}

// CommonMark also allows a carriage return as line end, but no program that writes front matter does.
std::optional<Place> findFrontMatter(std::string_view text) {
  Place place;
  place.content = nextLine(text, 0);
  if (withoutBlanksAtEnd(text.substr(0, place.content)) != "---") {
    return std::nullopt;
  }
  for (place.fence = place.content; place.fence < text.size(); place.fence = place.end) {
    place.end = nextLine(text, place.fence);
    const std::string_view line = withoutBlanksAtEnd(text.substr(place.fence, place.end - place.fence));
    if (line == "---" || line == "...") {
      return place;
    }
    if (place.fence == place.content && line.empty()) {
      return std::nullopt;  // a rule, and what looks like the end is another
    }
  }
  return std::nullopt;
}

bool isOnlyOfComments(std::string_view lines) {
  for (std::size_t at = 0; at < lines.size(); at = nextLine(lines, at)) {
    const std::size_t first = lines.find_first_not_of(" \t", at);
    if (first != lines.npos && lines[first] != '#' && lines[first] != '\n' && lines[first] != '\r') {
      return false;
    }
  }
  return true;
}

// The setting of a name in the front matter; empty: none.
std::string_view settingOf(std::string_view name) {
  static constexpr std::array<std::pair<std::string_view, std::string_view>, 6> kSettings = {
      {{"title", "title"},
       {"author", "author"},
       {"date", "date"},
       {"lang", "language"},
       {"language", "language"},
       {"keywords", "keywords"}}};
  for (const auto& [known, setting] : kSettings) {
    if (scrivalen::equalIgnoringCase(name, known)) {
      return setting;
    }
  }
  return {};
}

// Whether a text that begins with a fence goes on with a name of ours, as hardly any text below a rule does.
bool beginsLikeFrontMatter(std::string_view text) {
  const std::size_t content = nextLine(text, 0);
  if (withoutBlanksAtEnd(text.substr(0, content)) != "---") {
    return false;
  }
  const std::string_view line = withoutBlanksAtEnd(text.substr(content, nextLine(text, content) - content));
  const std::size_t colon = line.find(':');
  const bool isEntry = colon != line.npos && (colon + 1 == line.size() || line[colon + 1] == ' ');
  return isEntry && !settingOf(withoutBlanksAtEnd(line.substr(0, colon))).empty();
}

std::string_view valueOf(const yaml_event_t& scalar) {
  return {reinterpret_cast<const char*>(scalar.data.scalar.value), scalar.data.scalar.length};
}

// YAML 1.1, "null": a value that is left out. In quotes they are texts.
bool isNull(const yaml_event_t& scalar) {
  static constexpr std::array<std::string_view, 5> kNulls = {"", "~", "null", "Null", "NULL"};
  return scalar.data.scalar.style == YAML_PLAIN_SCALAR_STYLE &&
         std::find(kNulls.begin(), kNulls.end(), valueOf(scalar)) != kNulls.end();
}

std::string textOf(const yaml_event_t& scalar) {
  if (isNull(scalar)) {
    return {};
  }
  std::string text;
  for (const char c : valueOf(scalar)) {
    text.append(c == '\0' ? std::string_view("\xEF\xBF\xBD") : std::string_view(&c, 1));
  }
  const std::size_t first = text.find_first_not_of(" \t\n");
  return first == text.npos ? std::string() : text.substr(first, text.find_last_not_of(" \t\n") + 1 - first);
}

bool begins(const yaml_event_t& event) {
  return event.type == YAML_SEQUENCE_START_EVENT || event.type == YAML_MAPPING_START_EVENT;
}

bool ends(const yaml_event_t& event) {
  return event.type == YAML_SEQUENCE_END_EVENT || event.type == YAML_MAPPING_END_EVENT;
}

class FrontMatterReader {
 public:
  /// @param text  from the first fence to the last, which is not in it
  explicit FrontMatterReader(std::string_view text) : events_(text) {}

  FrontMatter read();

 private:
  void readEntry(const yaml_event_t& key);
  std::optional<std::string> readValue();
  std::optional<std::string> readList();
  void skipRestOf(const yaml_event_t& event);
  void set(std::string_view setting, std::string value);

  YamlEvents events_;
  FrontMatter result_;
};

FrontMatter FrontMatterReader::read() {
  events_.next();  // the stream begins
  events_.next();  // the document begins
  if (events_.next().type != YAML_MAPPING_START_EVENT) {
    throw YamlError(events_.line(), "there is no \"name: value\"");
  }
  for (const yaml_event_t* event = &events_.next(); event->type != YAML_MAPPING_END_EVENT; event = &events_.next()) {
    readEntry(*event);
  }
  while (events_.next().type != YAML_STREAM_END_EVENT) {
  }
  return std::move(result_);
}

void FrontMatterReader::readEntry(const yaml_event_t& key) {
  const std::string name = key.type == YAML_SCALAR_EVENT ? std::string(valueOf(key)) : std::string();
  skipRestOf(key);
  const std::string_view setting = settingOf(name);
  if (setting.empty()) {
    return skipRestOf(events_.next());
  }
  const std::size_t line = events_.line();
  if (auto value = readValue()) {
    return set(setting, std::move(*value));
  }
  result_.warnings.push_back("line " + std::to_string(line) + ": '" + name +
                             "' is neither a text nor a list of texts, so it is skipped");
}

std::optional<std::string> FrontMatterReader::readValue() {
  const yaml_event_t& event = events_.next();
  if (event.type == YAML_SCALAR_EVENT) {
    return textOf(event);
  }
  if (event.type == YAML_SEQUENCE_START_EVENT) {
    return readList();
  }
  skipRestOf(event);
  return std::nullopt;
}

std::optional<std::string> FrontMatterReader::readList() {
  std::optional<std::string> list = std::string();
  for (const yaml_event_t* event = &events_.next(); event->type != YAML_SEQUENCE_END_EVENT; event = &events_.next()) {
    if (event->type != YAML_SCALAR_EVENT) {
      list.reset();
      skipRestOf(*event);
    } else if (const std::string text = textOf(*event); list && !text.empty()) {
      list->append(list->empty() ? "" : ", ").append(text);
    }
  }
  return list;
}

void FrontMatterReader::skipRestOf(const yaml_event_t& event) {
  for (int depth = begins(event) ? 1 : 0; depth > 0;) {
    const yaml_event_t& next = events_.next();
    depth += begins(next) ? 1 : 0;
    depth -= ends(next) ? 1 : 0;
  }
}

void FrontMatterReader::set(std::string_view setting, std::string value) {
  if (value.empty()) {
    return;
  }
  if (setting == "title") {
    result_.title = std::move(value);
  } else {
    result_.settings.emplace_back(setting, std::move(value));
  }
}

FrontMatter textWithWarning(std::size_t line, const std::string& warning) {
  FrontMatter none;
  none.warnings.push_back("line " + std::to_string(line) + ": " + warning);
  return none;
}

FrontMatter notRead(std::size_t line, const std::string& reason) {
  return textWithWarning(line, reason + ", so the front matter is read as text");
}

FrontMatter withoutBlock(std::string_view text) {
  if (!beginsLikeFrontMatter(text)) {
    return {};
  }
  return textWithWarning(1, "no line '---' or '...' ends the front matter, so it is read as text");
}

}  // namespace

FrontMatter frontMatterOf(std::string_view text) {
  const auto place = findFrontMatter(text);
  if (!place) {
    return withoutBlock(text);
  }
  const std::string_view lines = text.substr(place->content, place->fence - place->content);
  if (isOnlyOfComments(lines)) {
    FrontMatter empty;
    empty.size = lines.empty() ? place->end : 0;  // comments may be headings between two rules
    return empty;
  }
  if (place->fence > kLongest) {
    return notRead(1, "there are more than 256 KiB up to the next '---'");
  }
  try {
    FrontMatter result = FrontMatterReader(text.substr(0, place->fence)).read();
    result.size = place->end;
    return result;
  } catch (const YamlError& error) {
    return notRead(error.line(), error.what());
  }
}

}  // namespace scrivalen::command
