#include "writing/picture_source.h"

#include "system/files/files.h"
#include "text/address.h"
#include "text/utf.h"
#include "writing/percent_encoding.h"

namespace scrivalen::command {
namespace {

bool isBelow(const std::wstring& folder, const std::wstring& path) {
  std::wstring root = scrivalen::resolvedPath(folder.empty() ? L"." : folder);
  if (root.empty() || scrivalen::kPathSeparators.find(root.back()) == std::wstring_view::npos) {
    root += scrivalen::kPathSeparator;
  }
  return scrivalen::resolvedPath(path).starts_with(root);
}

}  // namespace

PictureSource pictureSource(const std::wstring& folder, std::string_view address) {
  using Place = PictureSource::Place;
  if (scrivalen::hasScheme(scrivalen::toWide(address)) || address.starts_with("//")) {
    return {Place::Elsewhere};
  }
  const std::wstring name = scrivalen::toWide(percentDecoded(address.substr(0, address.find_first_of("?#"))));
  if (name.empty()) {
    return {Place::Nowhere};
  }
  // A colon is that of a drive or of a stream of a file.
  if (name.find(L':') != name.npos || name.find(L'\0') != name.npos || name.front() == L'/' ||
      name.front() == L'\\') {
    return {Place::Outside};
  }
  const std::wstring path = folder + name;
  if (!isBelow(folder, path) || scrivalen::isSpecialFile(path)) {
    return {Place::Outside};
  }
  return {Place::File, scrivalen::narrowPath(path)};
}

}  // namespace scrivalen::command
