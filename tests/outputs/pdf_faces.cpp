// Writes a conforming PDF with a paragraph in each face, and the text that readers must find in it.
//
//   scrivalen_pdf_faces PDF TEXT [FACE]     TEXT becomes a file of UTF-8; FACE is left out
#include "scrivalen/output_file.h"
#include "scrivalen/pdf_doc.h"
#include "scrivalen/text.h"

#include <cstdio>
#include <cstdlib>
#include <limits>
#include <string>

namespace {

constexpr int kFaces = 19;

struct Signs {
  const wchar_t* given;
  const wchar_t* read;
};

constexpr Signs kLetters{L"Zw\xF6lf \x20AC (\x201Cso\x201D)", L"Zw\xF6lf \x20AC (\x201Cso\x201D)"};
constexpr Signs kGreek{L"abgd\xA5", L"\x3B1\x3B2\x3B3\x3B4\x221E"};
constexpr Signs kDingbats{L"!\"4", L"\x2701\x2702\x2714"};

// Bold dingbats are drawn in Times.
const Signs& signsOf(int face, bool bold) {
  const bool dingbats = face == PDF_ZAPFDINGBATS && !bold;
  return face == PDF_SYMBOL ? kGreek : dingbats ? kDingbats : kLetters;
}

void addParagraph(CPDFdoc& doc, int face, bool bold, std::wstring& read) {
  const std::wstring title = L"Face " + std::to_wstring(face) + (bold ? L" bold" : L"");
  doc.FontNo(100);
  doc.BoldOff();
  doc.Paragraf(0);
  doc.write(title.c_str());
  doc.BookMark(title.c_str());
  doc.AddOutlineItem(title.c_str(), title.c_str(), bold ? 1 : 0);
  doc.FontNo(face);
  bold ? doc.BoldOn() : doc.BoldOff();
  doc.Paragraf(0);
  doc.write(signsOf(face, bold).given);
  read += title + L"\n" + signsOf(face, bold).read + L"\n";
}

std::wstring fill(CPDFdoc& doc, int leftOut) {
  doc.AddFont(100, PDF_TIMES_ROMAN);
  for (int face = 0; face < kFaces; ++face) {
    doc.AddFont(face, static_cast<PDF_STANDARD_FONT_FACE>(face));
    doc.AddFont(face, PDF_COURIER);  // ignored: the number is taken
  }
  std::wstring read;
  for (int face = 0; face < kFaces; ++face) {
    if (face != leftOut) {
      doc.ColorOn({-0.0, std::numeric_limits<double>::quiet_NaN(), face / 20.0});
      addParagraph(doc, face, false, read);
      addParagraph(doc, face, true, read);
    }
  }
  return read;
}

}  // namespace

int main(int count, char** arguments) {
  if (count != 3 && count != 4) {
    std::fputs("usage: scrivalen_pdf_faces PDF TEXT [FACE]\n", stderr);
    return 2;
  }
  ReportFile pdf;
  ReportFile text;
  CPDFdoc doc;
  if (!pdf.Open(scrivalen::FromUtf8(arguments[1]).c_str()) || !text.Open(scrivalen::FromUtf8(arguments[2]).c_str())) {
    std::fputs("scrivalen_pdf_faces: cannot open the files\n", stderr);
    return 1;
  }
  doc.SetConforming(1);
  doc.BegDoc(pdf.Handle(), 0);
  const std::string read = scrivalen::ToUtf8(fill(doc, count == 4 ? std::atoi(arguments[3]) : -1));
  text.Write(read.data(), read.size());
  const bool isComplete = doc.EndDoc(L"no mode of the standard") == 0;
  return pdf.Close() && text.Close() && isComplete ? 0 : 1;
}
