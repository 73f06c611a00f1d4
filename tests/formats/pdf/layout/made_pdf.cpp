#include "formats/pdf/layout/made_pdf.h"

#include "scrivalen/output_file.h"
#include "support/documents/pdf_structure.h"
#include "support/files.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <charconv>
#include <utility>

namespace scrivalen::test {
namespace {

constexpr std::string_view kLineEnd = "\r\n";

std::size_t numberAt(std::string_view text, std::size_t at) {
  std::size_t number = 0;
  std::from_chars(text.data() + std::min(at, text.size()), text.data() + text.size(), number);
  return number;
}

// The text between the words and the next end mark after them; empty if there are no such words.
std::string_view between(std::string_view text, std::string_view words, std::string_view end) {
  const auto found = text.find(words);
  if (found == text.npos) {
    return {};
  }
  const auto begin = found + words.size();
  return text.substr(begin, text.find(end, begin) - begin);
}

// The number of the object that an entry refers to; 0 if there is no such entry.
std::size_t reference(std::string_view object, std::string_view key) {
  return numberAt(between(object, "\r\n/" + std::string(key) + " ", " 0 R"), 0);
}

// The content's line ends must all be CR LF.
std::string withPlainLineEnds(std::string_view content) {
  std::string plain;
  for (std::size_t i = 0; i < content.size(); ++i) {
    if (content.substr(i, 2) == kLineEnd) {
      ++i;
    } else {
      EXPECT_NE(content[i], '\n');
    }
    plain += content[i];
  }
  return plain;
}

}  // namespace

MadePdf::MadePdf(std::string fileBytes) : bytes(std::move(fileBytes)) {
  const std::string_view file = bytes;
  const std::size_t table = numberAt(file, file.rfind("startxref\r\n") + 11);
  if (file.substr(std::min(table, file.size()), 8) != "xref\r\n0 ") {
    ADD_FAILURE() << "no table at byte " << table;
    return;
  }
  constexpr std::size_t kLine = 20;
  const std::size_t firstLine = file.find(kLineEnd, table + 6) + 2 + kLine;
  std::vector<std::size_t> offsets(numberAt(file, table + 8) - 1);
  for (std::size_t i = 0; i < offsets.size(); ++i) {
    offsets[i] = numberAt(file, firstLine + i * kLine);
  }
  offsets.push_back(table);
  for (std::size_t i = 0; i + 1 < offsets.size(); ++i) {
    objects_.push_back(file.substr(offsets[i], offsets[i + 1] - offsets[i]));
    if (objects_.back().find("\r\n/Type /Page\r\n") != file.npos) {
      pages_.push_back(i + 1);
    }
  }
}

std::string_view MadePdf::object(std::size_t number) const {
  EXPECT_LE(number, objects_.size());
  return number >= 1 && number <= objects_.size() ? objects_[number - 1] : std::string_view();
}

std::string_view MadePdf::objectWith(std::string_view words) const {
  std::string_view only;
  int count = 0;
  for (const std::string_view object : objects_) {
    if (object.find(words) != object.npos) {
      only = object;
      ++count;
    }
  }
  EXPECT_EQ(count, 1) << words;
  return only;
}

std::string MadePdf::content(std::size_t page) const {
  EXPECT_LE(page, pages_.size());
  if (page > pages_.size()) {
    return {};
  }
  const std::string_view stream = object(reference(object(pages_[page - 1]), "Contents"));
  return withPlainLineEnds(between(stream, "\r\nstream\r\n", "\r\nendstream\r\n"));
}

std::vector<std::string> MadePdf::linesOf(std::size_t page) const {
  const std::string all = content(page);
  std::vector<std::string> lines;
  for (std::size_t at = 0; at < all.size();) {
    const std::size_t end = all.find('\n', at);
    lines.push_back(all.substr(at, end - at));
    at = end == all.npos ? all.size() : end + 1;
  }
  return lines;
}

std::vector<std::string> MadePdf::texts(std::size_t page) const {
  std::vector<std::string> found;
  for (const std::string& line : linesOf(page)) {
    if (line.starts_with('(') && line.ends_with(")Tj")) {
      found.push_back(line.substr(1, line.size() - 4));
    }
  }
  return found;
}

std::vector<std::string> MadePdf::frames(std::size_t page) const {
  std::vector<std::string> found;
  const std::vector<std::string> lines = linesOf(page);
  for (std::size_t i = 0; i + 1 < lines.size(); ++i) {
    if (lines[i].ends_with(" re") && lines[i + 1] == "S") {
      found.push_back(lines[i].substr(0, lines[i].size() - 3));
    }
  }
  return found;
}

std::size_t MadePdf::pageWith(std::size_t number) const {
  const auto found = std::find(pages_.begin(), pages_.end(), number);
  EXPECT_NE(found, pages_.end()) << number;
  return static_cast<std::size_t>(found - pages_.begin()) + 1;
}

std::string MadePdf::destinationOf(std::string_view object) const {
  const std::string_view destination = between(object, "/Dest [", "]\r\n");
  if (destination.empty()) {
    return "without a destination";
  }
  constexpr std::string_view kView = " 0 R\r\n/XYZ\r\n";
  const auto view = destination.find(kView);
  EXPECT_NE(view, destination.npos);
  EXPECT_TRUE(destination.ends_with("\r\n0\r\n"));
  std::string place(destination.substr(view + kView.size(), destination.size() - view - kView.size() - 5));
  place.replace(place.find(kLineEnd), kLineEnd.size(), 1, ' ');
  const std::size_t page = numberAt(destination, 0);
  return page == 0 ? "to object 0 at " + place : "to page " + std::to_string(pageWith(page)) + " at " + place;
}

std::vector<std::string> MadePdf::links() const {
  std::vector<std::string> found;
  for (std::size_t page = 1; page <= pages_.size(); ++page) {
    const std::string_view references = between(object(pages_[page - 1]), "\r\n/Annots [", "]");
    for (std::size_t at = 0; at < references.size(); at = references.find("R ", at) + 2) {
      const std::string_view annotation = object(numberAt(references, at));
      found.push_back("page " + std::to_string(page) + " [" + std::string(between(annotation, "/Rect [", "]")) + "] " +
                      destinationOf(annotation));
    }
  }
  return found;
}

std::string MadePdf::entryOf(std::size_t number) const {
  const std::string_view entry = object(number);
  const bool titled = entry.find("/Title (") != entry.npos;
  const std::string title = titled ? std::string(between(entry, "/Title (", ")\r\n")) : "untitled";
  const std::string count(between(entry, "/Count ", kLineEnd));
  return title + (count.empty() ? "" : " (" + count + ")") + " " + destinationOf(entry);
}

std::string MadePdf::outline() const {
  std::vector<std::size_t> next;  // on each open level
  std::string tree;
  for (const std::string_view object : objects_) {
    if (object.find("/Type /Outlines\r\n") != object.npos) {
      tree = std::string(between(object, "/Count ", kLineEnd)) + " entries\n";
      next.push_back(reference(object, "First"));
    }
  }
  while (!next.empty()) {
    const std::size_t entry = next.back();
    if (entry == 0) {
      next.pop_back();
      continue;
    }
    tree += std::string(2 * (next.size() - 1), ' ') + entryOf(entry) + "\n";
    next.back() = reference(object(entry), "Next");
    next.push_back(reference(object(entry), "First"));
  }
  return tree;
}

MadePdf made(CPDFdoc& doc, const std::function<void(CPDFdoc&)>& fill, PdfSetting setting) {
  const TemporaryFolder folder;
  const std::wstring path = folder / L"a.pdf";
  ReportFile file;
  EXPECT_TRUE(file.Open(path.c_str()));
  doc.SetConforming(setting.conforming);
  EXPECT_EQ(doc.BegDoc(file.Handle(), setting.landscape), 0);
  fill(doc);
  const int result = doc.EndDoc(setting.pageMode);
  EXPECT_TRUE(file.Close());
  MadePdf pdf(bytesOf(path));
  EXPECT_EQ(PdfStructure(pdf.bytes, setting.conforming != 0).problems(), std::vector<std::string>());
  pdf.result = result;
  return pdf;
}

MadePdf made(const std::function<void(CPDFdoc&)>& fill, PdfSetting setting) {
  CPDFdoc doc;
  return made(doc, fill, setting);
}

MadePdf madeInTimes(const std::function<void(CPDFdoc&)>& fill, PdfSetting setting) {
  return made(
      [&](CPDFdoc& doc) {
        doc.AddFont(1, PDF_TIMES_ROMAN);
        doc.FontNo(1);
        fill(doc);
      },
      setting);
}

void paragraph(CPDFdoc& doc, const wchar_t* text) {
  doc.Paragraf(0);
  doc.write(text);
}

void row(CPDFdoc& doc, const std::vector<const wchar_t*>& texts) {
  doc.BeginRow(static_cast<int>(texts.size()));
  for (const wchar_t* const text : texts) {
    doc.BeginCell(kWhiteCell);
    doc.write(text);
    doc.EndCell();
  }
  doc.EndRow();
}

void paragraphs(CPDFdoc& doc, int count) {
  for (int i = 1; i <= count; ++i) {
    paragraph(doc, std::to_wstring(i).c_str());
  }
}

}  // namespace scrivalen::test
