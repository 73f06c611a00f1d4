// A ledger, written the way a host application writes its reports.
//
//   ledger_report [FOLDER]
//
// It writes ledger.html, ledger.xml and ledger.txt to the folder, and a summary as a page in memory, which a program
// could send by mail. Run it without an argument and compare the three files.
#include <scrivalen/scrivalen.h>

#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

namespace {

struct Entry {
  const wchar_t* date;
  const wchar_t* customer;
  const wchar_t* address;
  long long cents;
  bool late;
};

struct Account {
  const wchar_t* anchor;
  const wchar_t* name;
  std::vector<Entry> entries;
};

// Stands for the application's database. Names from outside may contain any characters.
const std::vector<Account>& accounts() {
  static const std::vector<Account> list = {
      {L"sales",
       L"Sales",
       {{L"2024-10-01", L"Smith & Sons", L"https://example.com/smith", 119000, false},
        {L"2024-10-04", L"Caf\u00E9 <Zero>", L"https://example.com/zero?a=1&b=2", 4250, true},
        {L"2024-10-09", L"O\u2019Neill", L"https://example.com/oneill", 78015, false}}},
      {L"rent", L"Rent", {{L"2024-10-01", L"Riverside Estates", L"https://example.com/riverside", -150000, false}}},
  };
  return list;
}

std::wstring money(long long cents) {
  const long long amount = cents < 0 ? -cents : cents;
  const std::wstring fraction = std::to_wstring(amount % 100);
  return (cents < 0 ? L"-" : L"") + std::to_wstring(amount / 100) + (fraction.size() < 2 ? L".0" : L".") + fraction;
}

long long balance(const Account& account) {
  long long sum = 0;
  for (const Entry& entry : account.entries) {
    sum += entry.cents;
  }
  return sum;
}

void print(std::FILE* stream, const std::wstring& text) {
  std::fprintf(stream, "%s\n", scrivalen::ToUtf8(text).c_str());
}

// Sends the library's log to the application's own log. The handler is called in any thread that writes a report, and
// must not throw.
void onLog(const wchar_t* message) { print(stderr, std::wstring(L"log: ") + message); }

// Link writes its text and its address into the page unchanged, so they have to be quoted. Each format has its own
// Quoting, but a MultiReport has none, so this uses that of an HTML report. XML and text drop links, both address and
// text.
std::wstring quoted(const wchar_t* text) {
  static HtmlReport html;
  return html.Quoting(text);
}

// Cell writes its text into the page unchanged; with BeginCell, Text, EndCell every format quotes it. The name is the
// element's name in XML.
void cell(AReport& report, const wchar_t* name, const std::wstring& text, const wchar_t* attributes = nullptr) {
  report.BeginCell(name, 0, attributes);
  report.Text(text.c_str(), PARAGRAPH_NONE, L"", 0);
  report.EndCell(name, 0);
}

void writeContents(AReport& report) {
  report.Ancor(L"contents");
  report.BeginToc();
  for (const Account& account : accounts()) {
    report.TocItem(account.anchor, quoted(account.name).c_str(), 1);
  }
  report.EndToc();
}

// A row without a name is a row in HTML and text but nothing in XML, which drops header cells anyway.
void writeHeader(AReport& report) {
  report.BeginRow(nullptr, nullptr, 3);
  report.Cell(L"Date", 1, L" style=\"width:8em\"");
  report.Cell(L"Customer", 1, nullptr);
  report.Cell(L"Amount", 1, L" style=\"text-align:right\"");
  report.EndRow(nullptr);
}

// SetCellColor is for the formats without attributes; HTML takes the colour from the attribute text.
void writeEntry(AReport& report, const Entry& entry) {
  report.BeginRow(L"entry", nullptr, 3);
  cell(report, L"date", entry.date);
  cell(report, L"customer", entry.customer);
  if (entry.late) {
    report.SetCellColor(L"#FFD6D6");
  }
  cell(report, L"amount", money(entry.cents),
       entry.late ? L" style=\"text-align:right;background:#ffd6d6\"" : L" style=\"text-align:right\"");
  report.EndRow(L"entry");
}

// A link to an anchor in the report is "#" and the anchor's name.
void writeBalance(AReport& report, const Account& account) {
  report.BeginParagraph(PARAGRAPH_NORMAL, nullptr);
  report.Text(L"Balance: ", PARAGRAPH_NONE, L"", 0);
  report.BeginStyle(STYLE_BOLD, 0);
  report.Text(money(balance(account)).c_str(), PARAGRAPH_NONE, L"", 0);
  report.EndStyle(STYLE_BOLD, 0);
  for (const Entry& entry : account.entries) {
    if (entry.late) {
      report.EndOfLine();
      report.Text((std::wstring(L"A reminder is due: ") + entry.customer).c_str(), PARAGRAPH_NONE, L"", 0);
      report.Space();
      report.Link(L"(address)", quoted(entry.address).c_str());
    }
  }
  report.EndParagraph(PARAGRAPH_NORMAL);
  report.Link(L"Contents", L"#contents");
}

void writeAccount(AReport& report, const Account& account) {
  report.BeginParagraph(PARAGRAPH_HEADING2, nullptr);
  report.BeginAncor(account.anchor);
  report.Text(account.name, PARAGRAPH_NONE, L"", 0);
  report.EndAncor();
  report.EndParagraph(PARAGRAPH_HEADING2);
  report.BeginTable(account.anchor, nullptr);
  writeHeader(report);
  for (const Entry& entry : account.entries) {
    writeEntry(report, entry);
  }
  report.EndTable(account.anchor);
  writeBalance(report, account);
}

// The composite rows write the table with which many reports begin.
void writeAttributes(AReport& report) {
  report.BeginTable(L"attributes", nullptr);
  report.AttributeRowHeader();
  report.ReportCreated();
  report.ProductRow(L"Written by");
  report.Row2(L"Accounts", std::to_wstring(accounts().size()).c_str(), 0, nullptr, nullptr);
  report.EndTable(L"attributes");
}

void writeLedger(AReport& report) {
  report.Text(L"Ledger", PARAGRAPH_HEADING1, L"", 0);
  writeAttributes(report);
  writeContents(report);
  for (const Account& account : accounts()) {
    writeAccount(report, account);
  }
}

// The library takes wide paths; on some systems the standard library's own conversion depends on the locale.
std::wstring wide(const std::filesystem::path& path) {
  const std::u8string utf8 = path.u8string();
  return scrivalen::FromUtf8({reinterpret_cast<const char*>(utf8.data()), utf8.size()});
}

// Open may fail for some of the reports, and Close reports a full disk, so check both results. Close also closes what a
// failed Open has opened; Clear then releases the reports.
bool writeFiles(const std::filesystem::path& folder) {
  MultiReport report;
  report.AddReport(FORMAT_HTML, wide(folder / "ledger.html").c_str(), L"default.htm");
  report.AddReport(FORMAT_XML, wide(folder / "ledger.xml").c_str(), nullptr);
  report.AddReport(FORMAT_TEXT, wide(folder / "ledger.txt").c_str(), nullptr);
  // These settings only apply to reports added before.
  report.AddProperty(L"%TITLE%", quoted(L"Ledger of Smith & Sons").c_str());
  report.SetColumnSeparator(L"; ");
  report.SetReportOption(OPTION_CONFORMING, 1);
  const bool opened = report.Open() == REPORT_OK;
  if (opened) {
    writeLedger(report);
  }
  const bool closed = report.Close() == REPORT_OK;
  if (!opened || !closed) {
    print(stderr, std::wstring(L"ledger_report: ") + report.GetError());
  }
  report.Clear();
  return opened && closed;
}

// A stream of the host. If Write cannot keep its bytes, it throws, and the report's Close reports the failure.
class MemoryFile : public OutputFile {
 public:
  void Write(const void* data, std::size_t size) override { bytes_.append(static_cast<const char*>(data), size); }
  const std::string& bytes() const { return bytes_; }

 private:
  std::string bytes_;
};

// A class derived from HtmlReport can use its protected operations: writing to a stream, and formatted values. A page
// on a stream begins without a head, so this one writes its own.
class SummaryPage : public HtmlReport {
 public:
  bool write(OutputFile& file) {
    if (Open(&file) != REPORT_OK) {
      return false;
    }
    Text(L"<!DOCTYPE html><html lang=\"en\"><head><meta charset=\"utf-8\"><title>Summary</title></head><body>",
         PARAGRAPH_NONE, L"", 1);
    for (const Account& account : accounts()) {
      ValueToHtml(L"<p>%s: ", Quoting(account.name).c_str());
      ValueToHtml(L"%d booked, ", static_cast<int>(account.entries.size()));
      ValueToHtml(L"balance %s</p>", money(balance(account)).c_str());
    }
    return Close() == REPORT_OK;
  }
};

bool printSummary() {
  MemoryFile file;
  const bool written = SummaryPage().write(file);
  std::fwrite(file.bytes().data(), 1, file.bytes().size(), stdout);
  return written;
}

}  // namespace

int main(int argc, char** argv) {
  scrivalen::SetLogHandler(&onLog);
  const bool written = writeFiles(argc > 1 ? argv[1] : "");
  const bool summed = printSummary();
  return written && summed ? 0 : 1;
}
