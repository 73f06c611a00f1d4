#include "formats/markup/html.h"

#include "output/encode.h"
#include "output/failure_reason.h"

#include <charconv>
#include <exception>
#include <utility>

using namespace scrivalen;

namespace {

constexpr std::string_view kHeadBeforeTitle =
    "<!DOCTYPE html>\n"
    "<html lang=\"en\">\n"
    "<head>\n"
    "<meta charset=\"utf-8\">\n"
    "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n";

constexpr std::string_view kHeadAfterTitle =
    "<style>\n"
    "body { font-family: sans-serif; line-height: 1.4; margin: 2em; }\n"
    "table { border-collapse: collapse; margin: 1em 0; }\n"
    "th, td { border: 1px solid #bbb; padding: 0.25em 0.6em; text-align: left; vertical-align: top; }\n"
    "th { background: #eee; }\n"
    "</style>\n"
    "</head>\n"
    "<body>\n";

}  // namespace

// A buffer of the writer's own for the host's file.
struct HTML::HostOutput : ByteSink {
  explicit HostOutput(OutputFile& target) : file(&target), buffer(*this) {}

  bool take(const char* data, std::size_t size) override {
    try {
      file->Write(data, size);
      return true;
    } catch (const std::exception&) {
      error.keepException();
    } catch (...) {
      error.keep(L"The output file failed.");
    }
    return false;
  }

  OutputFile* file;
  OutputBuffer buffer;
  Reason error;
};

void HTML::Open(ReportFile& file) {
  Flush();
  host_.reset();
  out_ = bufferOf(file);
}

void HTML::Open(OutputFile& file) {
  Flush();
  auto host = std::make_shared<HostOutput>(file);
  host->buffer.reserve(1);  // allocates now, so that no write has to
  host_ = std::move(host);
  out_ = &host_->buffer;
}

void HTML::Unbind() {
  out_ = nullptr;
  host_.reset();
  loss_.reset();
}

void HTML::Head(const wchar_t* title, const wchar_t*, int) {
  Literal(kHeadBeforeTitle);
  if (title) {
    Literal("<title>");
    QuotedText(title);
    Literal("</title>\n");
  }
  Literal(kHeadAfterTitle);
}

void HTML::HeadXML() { Literal("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"); }

void HTML::Text(std::wstring_view text) {
  if (out_) {
    putUtf8Text(*out_, text, loss_);
  }
}

void HTML::Number(int number) {
  char digits[16];
  Literal({digits, std::to_chars(digits, digits + sizeof digits, number).ptr});
}

void HTML::QuotedText(const wchar_t* text) {
  if (out_ && text) {
    putQuoted(*out_, text, loss_);
  }
}

void HTML::QuotedOnce(const wchar_t* text) {
  if (out_ && text) {
    putQuotedOnce(*out_, text, loss_);
  }
}

void HTML::Content(const wchar_t* text) {
  if (out_ && text) {
    putElementContent(*out_, text, loss_);
  }
}

// Names are almost always short and ASCII: these are copied while their end is searched for.
void HTML::writeName(const wchar_t* name) {
  constexpr std::size_t kUsual = 64;
  if (!out_ || !name) {
    return;
  }
  char* at = out_->reserve(kUsual);
  const char* const limit = at + kUsual;
  while (*name > 0 && *name < 0x80 && at < limit) {
    *at++ = static_cast<char>(*name++);
  }
  out_->advance(at);
  if (*name) {
    Text(name);
  }
}

void HTML::OpenTag(const wchar_t* name, const wchar_t* attribute, const wchar_t* value) {
  Literal("<");
  writeName(name);
  if (attribute) {
    Literal(" ");
    Text(attribute);
    Literal("=\"");
    QuotedText(value);
    Literal("\"");
  }
  Literal(">");
}

void HTML::CloseTag(const wchar_t* name) {
  Literal("</");
  writeName(name);
  Literal(">");
}

void HTML::Tag(const wchar_t* name, const wchar_t* content, const wchar_t*, const wchar_t*) {
  OpenTag(name, nullptr, nullptr);
  Content(content);
  CloseTag(name);
}

void HTML::Table(short open, short, const wchar_t* attributes) {
  if (open == 0) {
    Literal("</table>");
    return;
  }
  Literal("<table");
  if (attributes && *attributes) {
    Literal(" ");
    Text(attributes);
  }
  Literal(">");
}

std::wstring HTML::Quoting(const std::wstring& text, int) {
  LossCounter ignored;
  return quotedText(text, ignored);
}

std::wstring HTML::CountedQuoting(const std::wstring& text) { return quotedText(text, loss_); }

bool HTML::Flush() { return !out_ || out_->flush(); }

bool HTML::Close(int) {
  Literal("</body></html>\n");
  return Flush();
}

std::wstring_view HTML::Error() const { return host_ ? host_->error.text() : std::wstring_view(); }
