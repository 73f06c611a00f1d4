#include "formats/docx/reference/package_reader.h"

#include "formats/docx/reference/xml_reader.h"
#include "formats/docx/xml.h"
#include "output/archive/zip_reader.h"
#include "text/ascii.h"

#include <algorithm>
#include <cstddef>
#include <string>

namespace scrivalen::document::docx {
namespace {

constexpr std::size_t kMostPartBytes = std::size_t{4} << 20;

constexpr std::string_view kRelationTypes = "http://schemas.openxmlformats.org/officeDocument/2006/relationships/";
constexpr std::string_view kStrictRelationTypes = "http://purl.oclc.org/ooxml/officeDocument/relationships/";

std::string inQuotes(std::string_view part) { return joined({"'", part, "'"}); }

XmlElement readPart(const ZipReader& archive, std::string_view part) {
  const std::string text = archive.read(part, kMostPartBytes);
  try {
    return readXml(text);
  } catch (const XmlError& error) {
    throw ArchiveError(joined({"its part ", inQuotes(part), " ", error.what()}));
  }
}

// The path of a relation's target. Names that lead out of the archive stay in it (RFC 3986, 5.2.4).
std::string resolvedTarget(std::string_view folder, std::string_view target) {
  std::string path(target.starts_with('/') ? std::string_view() : folder);
  while (!target.empty()) {
    const std::string_view segment = target.substr(0, target.find('/'));
    target.remove_prefix(std::min(segment.size() + 1, target.size()));
    if (segment == "..") {
      path.resize(path.empty() ? 0 : path.size() - 1);
      path.resize(path.rfind('/') + 1);
    } else if (!segment.empty() && segment != ".") {
      path.append(segment).append("/");
    }
  }
  path.resize(path.empty() ? 0 : path.size() - 1);
  return path;
}

// The relations of a part; of the whole archive for an empty name.
class Relations {
 public:
  Relations(const ZipReader& archive, std::string_view part)
      : folder_(part.substr(0, part.rfind('/') + 1)),
        name_(joined({folder_, "_rels/", part.substr(folder_.size()), ".rels"})) {
    if (archive.has(name_)) {
      root_ = readPart(archive, name_);
    }
  }

  // The part that a relation leads to; nothing without one.
  std::optional<std::string> target(std::string_view type) const {
    for (const XmlElement& relation : root_.children) {
      if (relation.name != "Relationship" || equalIgnoringCase(relation.attribute("TargetMode"), "External")) {
        continue;
      }
      const std::string_view found = relation.attribute("Type");
      if (found == joined({kRelationTypes, type})) {
        return resolvedTarget(folder_, relation.attribute("Target"));
      }
      if (found == joined({kStrictRelationTypes, type})) {
        throw ArchiveError("it is in the strict form of Office Open XML; save it as an ordinary Word document");
      }
    }
    return std::nullopt;
  }

 private:
  std::string folder_;
  std::string name_;
  XmlElement root_;
};

void requireRoot(const XmlElement& root, std::string_view part, std::string_view name, std::string_view content) {
  if (root.name != name) {
    throw ArchiveError(joined({"its part ", inQuotes(part), " holds no ", content, " of a Word document"}));
  }
}

std::optional<XmlElement> readOptional(const ZipReader& archive, const Relations& relations, std::string_view type,
                                       std::string_view root, std::string_view content) {
  const auto part = relations.target(type);
  if (!part) {
    return std::nullopt;
  }
  XmlElement element = readPart(archive, *part);
  requireRoot(element, *part, root, content);
  return element;
}

void requireNoCompoundFile(std::string_view bytes) {
  if (bytes.starts_with("\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1")) {
    throw ArchiveError("it is a Word document of the form before 2007, or protected by a password");
  }
}

}  // namespace

LookParts readLookParts(std::string_view bytes) {
  requireNoCompoundFile(bytes);
  const ZipReader archive(bytes);
  const auto document = Relations(archive, {}).target("officeDocument");
  if (!document) {
    throw ArchiveError("it is not a Word document (.docx or .dotx)");
  }
  if (!archive.has(*document)) {
    throw ArchiveError(joined({"its part ", inQuotes(*document), " is missing"}));
  }
  const Relations relations(archive, *document);
  auto styles = readOptional(archive, relations, "styles", "w:styles", "styles");
  if (!styles) {
    throw ArchiveError("it has no styles");
  }
  return {std::move(*styles), readOptional(archive, relations, "theme", "a:theme", "theme"),
          readOptional(archive, relations, "fontTable", "w:fonts", "fonts")};
}

}  // namespace scrivalen::document::docx
