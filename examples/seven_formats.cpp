// One stream of calls, seven files: a garage's report to the owner of a fleet.
//
//   seven_formats [FOLDER]
//
// It writes fleet.txt, fleet.html, fleet.xml, fleet.rtf, fleet.pdf, fleet.xlsx and fleet.chm to the folder, which must
// exist. The help file needs a compiler, see the guide; without one the program reports an error and writes the other
// six.
#include <scrivalen/scrivalen.h>

#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

namespace {

struct Visit {
  const wchar_t* date;
  const wchar_t* work;
  const wchar_t* parts;
  int cents;
  bool urgent;
};

struct Vehicle {
  const wchar_t* anchor;
  const wchar_t* name;
  const wchar_t* note;
  std::vector<Visit> visits;
};

// Stands for the application's database.
const std::vector<Vehicle>& vehicles() {
  static const std::vector<Vehicle> list = {
      {L"van",
       L"Van 12",
       L"Used in town. The battery will not last another winter.",
       {{L"2026-07-06", L"Inspection", L"filters, oil", 31900, false},
        {L"2026-09-21", L"Brakes {front}", L"discs & pads", 48250, true},
        {L"2026-10-30", L"Charging system", L"\u2014", 9500, false}}},
      {L"truck",
       L"Truck 3",
       L"Mostly on long journeys: 41 000 km since July.",
       {{L"2026-08-14", L"Tyres, all six", L"315/80 R22.5", 214080, false},
        {L"2026-10-02", L"Cooling", L"pump <new>", 66735, true}}},
  };
  return list;
}

std::wstring money(int cents) {
  const std::wstring fraction = std::to_wstring(cents % 100);
  return std::to_wstring(cents / 100) + (fraction.size() < 2 ? L".0" : L".") + fraction;
}

void print(std::FILE* stream, const std::wstring& text) {
  std::fprintf(stream, "%s\n", scrivalen::ToUtf8(text).c_str());
}

// The library takes wide paths; on some systems the standard library's own conversion depends on the locale.
std::wstring wide(const std::filesystem::path& path) {
  const std::u8string utf8 = path.u8string();
  return scrivalen::FromUtf8({reinterpret_cast<const char*>(utf8.data()), utf8.size()});
}

/// Writes the report, independent of the formats.
class FleetReport {
 public:
  /// @param topics  the folder for the pages of the help file, with a trailing separator
  FleetReport(AReport& report, const std::filesystem::path& topics) : report_(report), topics_(wide(topics)) {}

  void write();

 private:
  void beginTopic(const wchar_t* file, const wchar_t* title) { report_.BeginSubDocument(topics_.c_str(), file, title); }
  void heading(PARAGRAPH_TYPE level, const wchar_t* anchor, const wchar_t* text);
  void paragraph(const wchar_t* text);
  void overview();
  void contents();
  void attributes();
  void vehicle(const Vehicle& vehicle);
  void visits(const Vehicle& vehicle);
  void visit(const Visit& visit);
  void cell(const wchar_t* name, const std::wstring& text);

  AReport& report_;
  std::wstring topics_;
};

// Each topic is a page of the help file; the other formats ignore the calls that begin and end it.
void FleetReport::write() {
  overview();
  for (const Vehicle& each : vehicles()) {
    vehicle(each);
  }
}

void FleetReport::overview() {
  beginTopic(L"overview.htm", L"Overview");
  heading(PARAGRAPH_HEADING1, L"overview", L"Fleet report, autumn 2026");
  paragraph(L"What was done, what it cost, and what has to be done soon.");
  contents();
  attributes();
  report_.EndSubDocument();
}

void FleetReport::heading(PARAGRAPH_TYPE level, const wchar_t* anchor, const wchar_t* text) {
  report_.BeginParagraph(level, nullptr);
  report_.BeginAncor(anchor);
  report_.BeginStyle(STYLE_BOLD, 0);
  report_.Text(text, PARAGRAPH_NONE, L"", 0);
  report_.EndStyle(STYLE_BOLD, 0);
  report_.EndAncor();
  report_.EndParagraph(level);
}

void FleetReport::paragraph(const wchar_t* text) {
  report_.BeginParagraph(PARAGRAPH_NORMAL, nullptr);
  report_.Text(text, PARAGRAPH_NONE, L"", 0);
  report_.EndParagraph(PARAGRAPH_NORMAL);
}

// In HTML and RTF this is a list of links, in PDF the outline. A help file builds its contents from its topics.
void FleetReport::contents() {
  report_.BeginToc();
  for (const Vehicle& each : vehicles()) {
    report_.TocItem(each.anchor, each.name, 0);
  }
  report_.EndToc();
}

void FleetReport::attributes() {
  report_.BeginTable(L"attributes", nullptr);
  report_.AttributeRowHeader();
  report_.ReportCreated();
  report_.ProductRow(L"Written by");
  report_.Row2(L"Vehicles", std::to_wstring(vehicles().size()).c_str(), 0, nullptr, nullptr);
  report_.EndTable(L"attributes");
}

void FleetReport::vehicle(const Vehicle& vehicle) {
  beginTopic((std::wstring(vehicle.anchor) + L".htm").c_str(), vehicle.name);
  heading(PARAGRAPH_HEADING2, vehicle.anchor, vehicle.name);
  paragraph(vehicle.note);
  visits(vehicle);
  report_.EndSubDocument();
}

void FleetReport::visits(const Vehicle& vehicle) {
  report_.BeginTable(vehicle.anchor, nullptr);
  report_.BeginRow(nullptr, nullptr, 4);
  for (const wchar_t* title : {L"Date", L"Work", L"Parts", L"Cost"}) {
    report_.Cell(title, 1, nullptr);
  }
  report_.EndRow(nullptr);
  for (const Visit& each : vehicle.visits) {
    visit(each);
  }
  report_.EndTable(vehicle.anchor);
}

// A colour applies to the next cell. Every format that can colour single cells knows the names of colours.
void FleetReport::visit(const Visit& visit) {
  report_.BeginRow(L"visit", nullptr, 4);
  cell(L"date", visit.date);
  if (visit.urgent) {
    report_.SetCellColor(L"yellow");
  }
  cell(L"work", visit.work);
  cell(L"parts", visit.parts);
  cell(L"cost", money(visit.cents));
  report_.EndRow(L"visit");
}

// Each format escapes the text between BeginCell and EndCell as it needs.
void FleetReport::cell(const wchar_t* name, const std::wstring& text) {
  report_.BeginCell(name, 0, nullptr);
  report_.Text(text.c_str(), PARAGRAPH_NONE, L"", 0);
  report_.EndCell(name, 0);
}

void addReports(MultiReport& report, const std::filesystem::path& folder) {
  report.AddReport(FORMAT_TEXT, wide(folder / "fleet.txt").c_str(), nullptr);
  report.AddReport(FORMAT_HTML, wide(folder / "fleet.html").c_str(), L"default.htm");
  report.AddReport(FORMAT_XML, wide(folder / "fleet.xml").c_str(), nullptr);
  report.AddReport(FORMAT_RTF, wide(folder / "fleet.rtf").c_str(), nullptr);
  report.AddReport(FORMAT_PDF, wide(folder / "fleet.pdf").c_str(), nullptr);
  report.AddReport(FORMAT_EXCEL, wide(folder / "fleet.xlsx").c_str(), nullptr);
  report.AddReport(FORMAT_CHM, wide(folder / "fleet.chm").c_str(), nullptr);
}

// Settings only apply to reports added before.
void prepare(MultiReport& report) {
  report.AddProperty(L"%TITLE%", L"Fleet report");
  report.SetColumnSeparator(L" | ");
  report.SetStyles(L"sheet { column-width: 15 } bold { color: #1F3864 }");
  report.SetReportOption(OPTION_CONFORMING, 1);
}

bool writeFiles(const std::filesystem::path& folder) {
  MultiReport report;
  addReports(report, folder);
  prepare(report);
  const bool opened = report.Open() == REPORT_OK;
  if (opened) {
    FleetReport(report, std::filesystem::absolute(folder) / "").write();
  }
  const bool closed = report.Close() == REPORT_OK;
  if (!opened || !closed) {
    print(stderr, std::wstring(L"seven_formats: ") + report.GetError());
  }
  report.Clear();
  return opened && closed;
}

// Prints the error box for a missing help compiler: a service has no user to see one.
void onErrorBox(const wchar_t* title, const wchar_t* text) { print(stderr, std::wstring(title) + L" " + text); }

}  // namespace

int main(int argc, char** argv) {
  scrivalen::SetErrorBoxHandler(&onErrorBox);
  return writeFiles(argc > 1 ? argv[1] : ".") ? 0 : 1;
}
