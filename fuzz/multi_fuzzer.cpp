#include "document_check.h"
#include "formats/document_formats.h"
#include "formats/document_report.h"
#include "formats/help/chm_report.h"
#include "formats/markup/xml_report.h"
#include "formats/pdf/layout/pdf_report.h"
#include "formats/rtf/rtf_report.h"
#include "formats/text/text_report.h"
#include "formats/xlsx/excel_report.h"
#include "input.h"
#include "markup_check.h"
#include "private_folder.h"
#include "scrivalen/host.h"
#include "scrivalen/html_report.h"
#include "scrivalen/multi_report.h"
#include "support/documents/pdf_structure.h"
#include "support/pdf/pdf_pages.h"

#include <cstdio>
#include <cstdlib>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

using scrivalen::fuzz::Input;
using scrivalen::fuzz::PrivateFolder;

// Makes the same calls on a MultiReport and on single reports of its formats, whose files must be the same. The calls
// either come in any order or nest like a document's; in that case the files are checked, too. A class derived from
// HtmlReport writes pages with the same calls.
namespace {

const PrivateFolder& folder() {
  static const PrivateFolder folder;
  return folder;
}

struct Format {
  REPORT_FORMAT format = FORMAT_TEXT;
  const char* extension = "";
  int oneIn = 1;                   // runs; a spreadsheet or a help file takes as long as a hundred other files
  const char* document = nullptr;  // its name as a document
};

constexpr Format kFormats[] = {{FORMAT_RTF, "rtf", 2},  {FORMAT_HTML, "html", 2}, {FORMAT_XML, "xml", 2},
                               {FORMAT_TEXT, "txt", 2}, {FORMAT_PDF, "pdf", 2},   {FORMAT_EXCEL, "xlsx", 32},
                               {FORMAT_CHM, "chm", 32}};

constexpr Format kDocuments[] = {
    {FORMAT_DOCUMENT_RTF, "document.rtf", 1, "rtf"},          {FORMAT_DOCUMENT_HTML, "document.html", 1, "html"},
    {FORMAT_DOCUMENT_XML, "document.xml", 1, "xml"},          {FORMAT_DOCUMENT_TEXT, "document.txt", 1, "text"},
    {FORMAT_DOCUMENT_PDF, "document.pdf", 1, "pdf"},          {FORMAT_DOCUMENT_EXCEL, "document.xlsx", 1, "xlsx"},
    {FORMAT_DOCUMENT_MARKDOWN, "document.md", 1, "markdown"}, {FORMAT_DOCUMENT_DOCX, "document.docx", 1, "docx"}};

// The settings of a run, made before its first call.
struct Plan {
  std::vector<Format> formats;
  bool nested = false;
  bool conforming = false;
  bool singleByte = false;
  bool landscape = false;
  bool hasTemplate = false;
  const wchar_t* title = nullptr;
  const wchar_t* property = nullptr;
  const wchar_t* styles = nullptr;
  const wchar_t* separator = nullptr;
};

Plan planOf(Input& input) {
  Plan plan;
  const int flags = input.byte();
  plan.nested = (flags & 1) != 0;
  plan.conforming = (flags & 2) != 0;
  plan.singleByte = (flags & 4) != 0;
  plan.landscape = (flags & 8) != 0;
  plan.hasTemplate = (flags & 16) != 0;
  for (const Format& format : kFormats) {
    if (input.byte() % format.oneIn == format.oneIn / 2) {
      plan.formats.push_back(format);
    }
  }
  if (const auto document = static_cast<std::size_t>(flags / 32); document > 0) {
    const bool isLast = document == std::size(kDocuments) - 1 && input.byte() % 2 == 1;
    plan.formats.push_back(kDocuments[isLast ? document : document - 1]);
  }
  plan.title = input.text();
  plan.property = input.text();
  plan.styles = input.text();
  plan.separator = input.text();
  return plan;
}

template <class Report>
void setUp(Report& report, const Plan& plan) {
  report.AddProperty(L"%TITLE%", plan.title);
  report.AddProperty(L"%X%", plan.property);
  report.SetStyles(plan.styles);
  report.SetColumnSeparator(plan.separator ? plan.separator : L"");
  report.SetReportOption(OPTION_CONFORMING, plan.conforming ? 1 : 0);
  report.SetReportOption(OPTION_SINGLE_BYTE_TEXT, plan.singleByte ? 1 : 0);
  report.SetReportOption(OPTION_LANDSCAPE, plan.landscape ? 1 : 0);
}

// Calls in any order, with any arguments. A MultiReport does not quote the values of composite rows as other reports
// do.
class AnyCalls {
 public:
  AnyCalls(AReport& report, Input& input, const Plan& plan) : report_(report), input_(input), plan_(plan) {}

  void play() {
    while (!input_.empty()) {
      call();
    }
  }

 private:
  const wchar_t* text() { return input_.text(); }
  int flag() { return input_.byte() & 1; }
  REPORT_STYLE styleOrOther() { return static_cast<REPORT_STYLE>(input_.byte() % 4); }
  PARAGRAPH_TYPE type() { return static_cast<PARAGRAPH_TYPE>(input_.number()); }
  int few() { return input_.number() % 300; }

  void call();
  void beginTopic();
  void openAgain();

  AReport& report_;
  Input& input_;
  const Plan& plan_;
  bool wasOpenedAgain_ = false;
};

void AnyCalls::call() {
  const wchar_t* const first = text();
  switch (input_.byte() % 36) {
    case 0: {
      const PARAGRAPH_TYPE paragraph = type();
      const wchar_t* const attributes = text();
      return report_.Text(first, paragraph, attributes, flag());
    }
    case 1: return report_.BeginAncor(first);
    case 2: return report_.EndAncor();
    case 3: return report_.Ancor(first);
    case 4: return report_.EndOfLine();
    case 5: {
      const REPORT_STYLE style = styleOrOther();
      return report_.BeginStyle(style, few());
    }
    case 6: {
      const REPORT_STYLE style = styleOrOther();
      return report_.EndStyle(style, few());
    }
    case 7: return report_.Space();
    case 8: return report_.BeginParagraph(type(), first);
    case 9: return report_.EndParagraph(type());
    case 10: return report_.BeginToc();
    case 11: {
      const wchar_t* const shown = text();
      return report_.TocItem(first, shown, input_.number());
    }
    case 12: return report_.EndToc();
    case 13: return report_.BeginTable(first, text());
    case 14: return report_.EndTable(first);
    case 15: {
      const wchar_t* const attributes = text();
      return report_.BeginRow(first, attributes, few());
    }
    case 16: return report_.EndRow(first);
    case 17: {
      const int header = flag();
      return report_.BeginCell(first, header, text());
    }
    case 18: return report_.EndCell(first, flag());
    case 19: {
      const int header = flag();
      return report_.Cell(first, header, text());
    }
    case 20: return report_.SetCellColor(first);
    case 21: return report_.Link(first, text());
    case 22: {
      const auto option = static_cast<REPORT_OPTION>(input_.byte());
      return report_.SetReportOption(option, flag());
    }
    case 23: return report_.AddProperty(first, text());
    case 24: return report_.SetColumnSeparator(first ? first : L"");
    case 25: report_.Quoting(first ? first : L""); return;
    case 26: return beginTopic();
    case 27: return report_.EndSubDocument();
    case 28: {
      const wchar_t* const second = text();
      return report_.Row2(first, second, flag(), second, first);
    }
    case 29: {
      const wchar_t* const second = text();
      return report_.Row3(first, second, first, flag());
    }
    case 30: return report_.Row2NotEmptyWithQuote(first, input_.byte() % 2 == 0 ? L"value" : nullptr);
    case 31: return report_.AttributeRowHeader();
    case 32: return report_.ReportCreated();
    case 33: return report_.ProductRow(first);
    case 34: return openAgain();
    default: return report_.BeginStyle(STYLE_FONT_SIZE, input_.number());
  }
}

// Topics of a few names in an existing folder, so that some are refused.
void AnyCalls::beginTopic() {
  static constexpr const wchar_t* kNames[] = {L"1.htm",      L"2.htm",    L"3.htm",     L"a b.htm",
                                              L"report.hhp", L"x\ny.htm", L"none/1.htm"};
  const std::wstring path = folder().widePath();
  const std::wstring name = kNames[static_cast<std::size_t>(input_.byte()) % std::size(kNames)];
  if (flag()) {
    report_.BeginSubDocument(path.c_str(), name.c_str(), text());
  } else {
    report_.BeginSubDocument(nullptr, (path + name).c_str(), text());
  }
}

// Once, and without a template: properties that contain one another could make it arbitrarily long.
void AnyCalls::openAgain() {
  if (!wasOpenedAgain_ && !plan_.hasTemplate) {
    wasOpenedAgain_ = true;
    report_.Close();
    report_.Open();
  }
}

// Calls that nest like a document's.
class NestedCalls {
 public:
  NestedCalls(AReport& report, Input& input) : report_(report), input_(input) {}

  void play() {
    while (!input_.empty()) {
      call();
    }
    while (!open_.empty()) {
      end();
    }
  }

 private:
  enum class Kind { Topic, Paragraph, Style, Anchor, Toc, Table, Row, Cell };
  struct Element {
    Kind kind;
    int number;  // its type, style or header flag
    std::wstring name;
  };

  void call();
  void callIn(Kind kind);
  void cell();
  void inlineCall();
  void begin(Kind kind);
  void end();

  const wchar_t* text() {
    const wchar_t* const text = input_.text();
    return text ? text : L"";
  }
  std::wstring name();
  PARAGRAPH_TYPE type() { return static_cast<PARAGRAPH_TYPE>(1 + input_.byte() % 7); }
  const wchar_t* attributes() { return input_.byte() % 2 == 0 ? L"" : L" class=\"x\""; }

  AReport& report_;
  Input& input_;
  std::vector<Element> open_;
};

void NestedCalls::call() {
  constexpr std::size_t kDeepest = 40;
  const int choice = input_.byte();
  if (choice % 4 == 0 || open_.size() > kDeepest) {
    return open_.empty() ? begin(Kind::Topic) : end();
  }
  if (open_.empty() || open_.back().kind == Kind::Topic || open_.back().kind == Kind::Cell) {
    static constexpr Kind kKinds[] = {Kind::Paragraph, Kind::Toc, Kind::Table, Kind::Style, Kind::Anchor};
    return choice % 4 == 1 ? begin(kKinds[static_cast<std::size_t>(choice / 4) % std::size(kKinds)]) : inlineCall();
  }
  callIn(open_.back().kind);
}

void NestedCalls::callIn(Kind kind) {
  switch (kind) {
    case Kind::Toc: {
      const wchar_t* const anchor = text();
      const wchar_t* const shown = text();
      return report_.TocItem(anchor, shown, input_.byte() % 12);
    }
    case Kind::Table: return begin(Kind::Row);
    case Kind::Row:
      if (input_.byte() % 2 == 0) {
        return begin(Kind::Cell);
      }
      return cell();
    default: return input_.byte() % 8 == 0 ? begin(Kind::Style) : inlineCall();
  }
}

void NestedCalls::cell() {
  const wchar_t* const shown = text();
  report_.Cell(shown, input_.byte() % 2, L"");
}

void NestedCalls::inlineCall() {
  switch (input_.byte() % 6) {
    case 0: return report_.EndOfLine();
    case 1: return report_.Space();
    case 2: return report_.Ancor(text());
    case 3: {
      const wchar_t* const shown = text();
      return report_.Link(shown, text());
    }
    default: return report_.Text(text(), PARAGRAPH_NONE, L"", 0);
  }
}

void NestedCalls::begin(Kind kind) {
  Element element{kind, 0, {}};
  switch (kind) {
    case Kind::Topic: report_.BeginSubDocument(folder().widePath().c_str(), L"topic.htm", text()); break;
    case Kind::Paragraph:
      element.number = type();
      report_.BeginParagraph(static_cast<PARAGRAPH_TYPE>(element.number), attributes());
      break;
    case Kind::Style:
      element.number = input_.byte() % 3;
      report_.BeginStyle(static_cast<REPORT_STYLE>(element.number), 1 + input_.byte() % 60);
      break;
    case Kind::Anchor: report_.BeginAncor(text()); break;
    case Kind::Toc: report_.BeginToc(); break;
    case Kind::Table:
      element.name = name();
      report_.BeginTable(element.name.c_str(), attributes());
      break;
    case Kind::Row:
      element.name = name();
      report_.BeginRow(element.name.c_str(), L"", 1 + input_.byte() % 8);
      break;
    case Kind::Cell:
      element.name = name();
      element.number = input_.byte() % 2;
      report_.BeginCell(element.name.c_str(), element.number, attributes());
      break;
  }
  open_.push_back(std::move(element));
}

void NestedCalls::end() {
  const Element element = std::move(open_.back());
  open_.pop_back();
  switch (element.kind) {
    case Kind::Topic: return report_.EndSubDocument();
    case Kind::Paragraph: return report_.EndParagraph(static_cast<PARAGRAPH_TYPE>(element.number));
    case Kind::Style: return report_.EndStyle(static_cast<REPORT_STYLE>(element.number), 0);
    case Kind::Anchor: return report_.EndAncor();
    case Kind::Toc: return report_.EndToc();
    case Kind::Table: return report_.EndTable(element.name.c_str());
    case Kind::Row: return report_.EndRow(element.name.c_str());
    case Kind::Cell: return report_.EndCell(element.name.c_str(), element.number);
  }
}

// A valid element name: in the classic form that is up to the caller.
std::wstring NestedCalls::name() {
  static constexpr const wchar_t* kNames[] = {L"table", L"row", L"cell", L"a-1.b", L"\u00E9", L"_"};
  return kNames[static_cast<std::size_t>(input_.byte()) % std::size(kNames)];
}

struct Results {
  REPORT_ERRORS open = REPORT_OK;
  REPORT_ERRORS close = REPORT_OK;

  bool operator==(const Results&) const = default;
};

void playContent(AReport& report, const Plan& plan, Input& input) {
  if (plan.nested) {
    NestedCalls(report, input).play();
  } else {
    AnyCalls(report, input, plan).play();
  }
}

template <class Report>
Results play(Report& report, const Plan& plan, Input& input) {
  Results results;
  setUp(report, plan);
  results.open = report.Open();
  playContent(report, plan, input);
  results.close = report.Close();
  return results;
}

std::string nameOf(const Format& format, const char* kind) { return std::string(kind) + '.' + format.extension; }

std::wstring pathOf(const Format& format, const char* kind) {
  const std::string path = folder().path() + nameOf(format, kind);
  return {path.begin(), path.end()};
}

const wchar_t* templateOf(const Plan& plan) { return plan.hasTemplate ? L"default.htm" : L""; }

struct Bytes {
  const std::uint8_t* data;
  std::size_t size;
};

Results playTogether(Bytes bytes) {
  Input input(bytes.data, bytes.size);
  const Plan plan = planOf(input);
  MultiReport report;
  for (const Format& format : plan.formats) {
    report.AddReport(format.format, pathOf(format, "multi").c_str(), templateOf(plan));
  }
  const Results results = play(report, plan, input);
  report.Clear();
  return results;
}

template <class Report, typename... Arguments>
Results playAlone(const Format& format, Bytes bytes, const Arguments&... arguments) {
  Input input(bytes.data, bytes.size);
  const Plan plan = planOf(input);
  Report report(arguments...);
  report.SetOutputFileName(pathOf(format, "alone").c_str());
  report.SetTemplateFileName(templateOf(plan));
  return play(report, plan, input);
}

Results playAlone(const Format& format, Bytes bytes) {
  if (format.document) {
    return playAlone<scrivalen::DocumentReport>(format, bytes, *scrivalen::documentFormatOf(format.document));
  }
  switch (format.format) {
    case FORMAT_RTF: return playAlone<RTFReport>(format, bytes);
    case FORMAT_HTML: return playAlone<HtmlReport>(format, bytes);
    case FORMAT_XML: return playAlone<XmlReport>(format, bytes);
    case FORMAT_TEXT: return playAlone<TextReport>(format, bytes);
    case FORMAT_CHM: return playAlone<CHMReport>(format, bytes);
    case FORMAT_PDF: return playAlone<PDFReport>(format, bytes);
    case FORMAT_EXCEL: return playAlone<ExcelReport>(format, bytes);
    default: return {};
  }
}

void require(bool good, const Format& format, const std::string& problem) {
  if (!good) {
    std::fprintf(stderr, "%s: %s\n", format.extension, problem.c_str());
    std::abort();
  }
}

// Opens the protected operations, as a host's class derived from HtmlReport can.
class Page : public HtmlReport {
 public:
  using HtmlReport::Open;
  using HtmlReport::OpenWithHeader;
  using HtmlReport::OpenWithTemplate;
  using HtmlReport::ValueToHtml;
};

class Memory : public OutputFile {
 public:
  void Write(const void* data, std::size_t size) override { bytes.append(static_cast<const char*>(data), size); }

  std::string bytes;
};

// A page opened by a derived class, which must equal one opened by Open.
std::string pageOpenedByName(const Format& format, Bytes bytes) {
  Input input(bytes.data, bytes.size);
  const Plan plan = planOf(input);
  const std::wstring path = pathOf(format, "page");
  Page page;
  page.SetOutputFileName(path.c_str());
  setUp(page, plan);
  const REPORT_ERRORS result = plan.hasTemplate ? page.OpenWithTemplate(path.c_str(), templateOf(plan))
                                                : page.OpenWithHeader(path.c_str(), page.GetProperty(L"%TITLE%"));
  require(result == REPORT_OK, format, "a derived class cannot open its file");
  playContent(page, plan, input);
  require(page.Close() == REPORT_OK, format, "a derived class cannot close its file");
  return folder().take(nameOf(format, "page"));
}

// A page in memory, which has the same bytes except the head. A call may have opened the file instead.
std::string pageInMemory(const Format& format, Bytes bytes) {
  Input input(bytes.data, bytes.size);
  const Plan plan = planOf(input);
  Memory memory;
  Page page;
  page.SetOutputFileName(pathOf(format, "page").c_str());
  setUp(page, plan);
  require(page.Open(&memory) == REPORT_OK, format, "a page in memory does not open");
  playContent(page, plan, input);
  require(page.Close() == REPORT_OK, format, "a page in memory does not close");
  folder().take(nameOf(format, "page"));
  return memory.bytes;
}

// Values with any format string; the fixed ones make sure that conversions occur often enough.
void writeValues(const Format& format, Bytes bytes) {
  static constexpr const wchar_t* kConversions[] = {L"%d",    L"%5i", L"%-8u|", L"%04x",
                                                    L"%+.3d", L"%X",  L"%c",    L"100%% %d"};
  Input input(bytes.data, bytes.size);
  Memory memory;
  Page page;
  require(page.Open(&memory) == REPORT_OK, format, "a page of values does not open");
  page.ValueToHtml(L"(%s)", L"first");
  while (!input.empty()) {
    const int choice = input.byte();
    const wchar_t* const other = input.text();
    const wchar_t* const known = kConversions[static_cast<std::size_t>(choice) % std::size(kConversions)];
    page.ValueToHtml(choice % 3 == 0 ? other : known, input.number());
    page.ValueToHtml(choice % 2 == 0 ? other : L"%-20.9s%c", input.text());
  }
  require(page.Close() == REPORT_OK, format, "a page of values does not close");
  require(memory.bytes.starts_with("(first)") && memory.bytes.ends_with("</body></html>\n"), format,
          "a page of values lacks its beginning or its end");
}

void checkPages(const Format& format, const Plan& plan, Bytes bytes, const std::string& alone) {
  require(pageOpenedByName(format, bytes) == alone, format, "a derived class writes a different page");
  const std::string inMemory = pageInMemory(format, bytes);
  const bool isComparable = plan.nested && !plan.hasTemplate;
  require(!isComparable || alone.ends_with(inMemory), format, "a page in memory differs");
  writeValues(format, bytes);
}

// Texts of the classic form are not escaped in PDF and RTF, so only a conforming file can be parsed whatever its
// content.
void checkNested(const Format& format, bool conforming, const std::string& bytes) {
  const std::string extension = format.extension;
  std::string problem;
  if (extension.ends_with("xml")) {
    problem = format.document ? scrivalen::fuzz::problemOfTags(bytes) : scrivalen::fuzz::problemOfXml(bytes);
  } else if (extension.ends_with("rtf") && conforming) {
    // A line feed comes after the outermost group of a document.
    problem =
        scrivalen::fuzz::problemOfRtf(std::string_view(bytes).substr(0, bytes.size() - (format.document ? 1 : 0)));
  } else if (extension.ends_with("pdf") && conforming) {
    const std::vector<std::string> problems = format.document ? scrivalen::test::PdfPages(bytes).problems()
                                                              : scrivalen::test::PdfStructure(bytes, true).problems();
    problem = problems.empty() ? "" : problems.front();
  }
  require(problem.empty(), format, problem);
}

void check(const Format& format, const Plan& plan, const Results& results, Bytes bytes) {
  const std::string together = folder().take(nameOf(format, "multi"));
  const std::string alone = folder().take(nameOf(format, "alone"));
  if (format.format == FORMAT_CHM) {
    return require(results.close != REPORT_OK && alone.empty() && together.empty(), format, "made without a compiler");
  }
  require(results == Results{}, format, "it did not open or close");
  const bool mayBeEmpty = format.format == FORMAT_TEXT || format.format == FORMAT_DOCUMENT_TEXT ||
                          format.format == FORMAT_DOCUMENT_MARKDOWN;
  require(!alone.empty() || mayBeEmpty, format, "the file is empty");
  require(alone == together, format, "a MultiReport writes a different file");
  if (plan.nested || format.document) {
    checkNested(format, plan.conforming || format.document, alone);
  }
  if (format.format == FORMAT_HTML) {
    checkPages(format, plan, bytes, alone);
  }
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  scrivalen::SetLogHandler([](const wchar_t*) {});
  scrivalen::SetErrorBoxHandler([](const wchar_t*, const wchar_t*) {});
  scrivalen::SetClockHandler([] { return std::int64_t{1700000000}; });
  // Private files must not be left behind either.
  setenv("TMPDIR", folder().path().c_str(), 1);
  // Hides the help compiler, which would take a second each time.
  return setenv("PATH", folder().path().c_str(), 1);
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Input input(data, size);
  const Plan plan = planOf(input);
  const Bytes bytes{data, size};
  const Results together = playTogether(bytes);
  REPORT_ERRORS close = REPORT_OK;
  for (const Format& format : plan.formats) {
    const Results alone = playAlone(format, bytes);
    check(format, plan, alone, bytes);
    close = close == REPORT_OK ? alone.close : close;
  }
  require(together == Results{REPORT_OK, close}, {}, "a MultiReport does not return the results of its reports");
  if (!folder().isEmpty()) {
    std::fprintf(stderr, "a file is left behind\n");
    std::abort();
  }
  return 0;
}
