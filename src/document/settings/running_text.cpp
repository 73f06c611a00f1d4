#include "document/settings/running_text.h"

#include "document/model/values.h"
#include "document/settings/settings.h"
#include "text/calendar.h"

#include <algorithm>
#include <iterator>

namespace scrivalen::document {
namespace {

struct Field {
  std::string_view name;
  RunningField field;
};

constexpr Field kFields[] = {{"{page}", RunningField::Page},
                             {"{pages}", RunningField::Pages},
                             {"{title}", RunningField::Title},
                             {"{date}", RunningField::Date},
                             {"{section}", RunningField::Section}};

// The field at the beginning of a text; null if there is none.
const Field* fieldAt(std::string_view text) {
  const auto* const found =
      std::find_if(std::begin(kFields), std::end(kFields), [text](const Field& f) { return text.starts_with(f.name); });
  return found == std::end(kFields) ? nullptr : found;
}

std::vector<RunningPiece> piecesOf(std::string_view text) {
  std::vector<RunningPiece> pieces;
  std::size_t end = 0;  // of the plain text at the beginning
  while (end < text.size()) {
    const Field* const field = fieldAt(text.substr(end));
    if (field == nullptr) {
      ++end;
      continue;
    }
    if (end > 0) {
      pieces.push_back({RunningField::None, text.substr(0, end)});
    }
    pieces.push_back({field->field, {}});
    text.remove_prefix(end + field->name.size());
    end = 0;
  }
  if (!text.empty()) {
    pieces.push_back({RunningField::None, text});
  }
  return pieces;
}

}  // namespace

RunningText runningTextOf(std::string_view setting) {
  RunningText result;
  for (std::size_t i = 0; i < result.size(); ++i) {
    const bool isLast = i + 1 == result.size();
    const std::size_t end = isLast ? setting.size() : std::min(setting.find('|'), setting.size());
    result[i] = piecesOf(setting.substr(0, end));
    setting.remove_prefix(std::min(end + 1, setting.size()));
  }
  return result;
}

std::string shownDate(const FormatSettings& settings) {
  if (settings.isSet("date")) {
    return std::string(settings.text("date"));
  }
  const std::int64_t seconds = settings.clock();
  const std::int64_t days = seconds / kSecondsPerDay - (seconds % kSecondsPerDay < 0 ? 1 : 0);
  const DateStyle dates = DateStyle::of(settings.text("dates")).value_or(DateStyle());
  char text[Values::kLongest];
  char* const end = Values({}, dates).date(text, static_cast<std::int32_t>(days), {});
  return std::string(text, end);
}

}  // namespace scrivalen::document
