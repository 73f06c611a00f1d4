#include "templates.h"
#include "writers/html_body.h"
#include "writers/single_report.h"
#include "writers/writers.h"

namespace scrivalen::command {
namespace {

class HtmlWriter : public DocumentWriter {
 public:
  HtmlWriter() = default;
  HtmlWriter(const HtmlWriter&) = delete;
  HtmlWriter& operator=(const HtmlWriter&) = delete;
  /// Destroying an open report would leave its file open.
  ~HtmlWriter() override { report_.Close(); }

  bool open(const std::wstring& file, const DocumentSettings& settings) override;
  void write(const Event& event) override { body_.write(event); }
  bool close() override { return report_.Close() == REPORT_OK; }
  std::wstring error() const override { return report_.GetError(); }

 private:
  std::wstring templateValue(const std::wstring& value);

  HtmlReport report_;
  HtmlBody body_{report_, report_};
};

bool HtmlWriter::open(const std::wstring& file, const DocumentSettings& settings) {
  std::wstring templateName = settings.templateFile;
  if (templateName.empty()) {
    templateName = templateFile(kDefaultTemplate).value_or(L"");
  }
  applySettings(report_, settings);
  report_.SetOutputFileName(file.c_str());
  report_.SetTemplateFileName(templateName.c_str());
  const auto value = [&](const std::wstring& text) { return templateName.empty() ? text : templateValue(text); };
  report_.AddProperty(L"%TITLE%", value(settings.title).c_str());
  for (const auto& [name, text] : settings.properties) {
    report_.AddProperty(name.c_str(), value(text).c_str());
  }
  return report_.Open() == REPORT_OK;
}

// Values are inserted into a template verbatim, and a placeholder inside a value would be replaced as well.
std::wstring HtmlWriter::templateValue(const std::wstring& value) {
  std::wstring result;
  for (const wchar_t c : report_.Quoting(value)) {
    if (c == L'%') {
      result += L"&#37;";
    } else {
      result += c;
    }
  }
  return result;
}

}  // namespace

std::unique_ptr<DocumentWriter> createHtmlWriter() { return std::make_unique<HtmlWriter>(); }

}  // namespace scrivalen::command
