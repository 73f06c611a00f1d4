#include "scrivalen/pdf_doc.h"

#include "formats/pdf/fonts/win_ansi.h"
#include "formats/pdf/layout/pdf_doc_state.h"

#include <memory>
#include <string>
#include <string_view>
#include <utility>

using namespace scrivalen;
using namespace scrivalen::pdf;
using PDFStuffer::Form;

int CPDFdoc::State::begin(NativeFile file, int landscape) {
  return beginWith(landscape, [file](Form form) { return std::make_unique<PDFStuffer::CPDFFile>(file, form); });
}

int CPDFdoc::State::begin(OutputBuffer& output, int landscape) {
  return beginWith(landscape, [&output](Form form) { return std::make_unique<PDFStuffer::CPDFFile>(output, form); });
}

template <typename MakeFile>
int CPDFdoc::State::beginWith(int landscape, MakeFile makeFile) {
  reset();
  failure.clear();
  last = Summary();
  containedIn(failure, [&] {
    const Form form = conforming ? Form::Conforming : Form::Classic;
    document = std::make_unique<Document>(makeFile(form), landscape ? kLandscape : kPortrait, form);
  });
  return document ? 0 : -3;
}

void CPDFdoc::State::reset() {
  document.reset();
  lastId = 0;
  style.size = CPDFtextStyle().size;
}

namespace {

std::wstring_view viewOf(const wchar_t* text) { return text ? text : L""; }

}  // namespace

CPDFdoc::CPDFdoc() : state_(std::make_unique<State>()) {}

CPDFdoc::~CPDFdoc() { Delete(); }

void CPDFdoc::Init() { state_->reset(); }

int CPDFdoc::BegDoc(void* file, int landscape) {
  if (state_->document) {
    return -1;
  }
  return file ? state_->begin(file, landscape) : -2;
}

bool CPDFdoc::IsOpen() const { return state_->document != nullptr; }

void CPDFdoc::AddFont(int id, PDF_STANDARD_FONT_FACE face) {
  state_->whileWhole([&](Document& document) { document.addFont(id, face); });
}

void CPDFdoc::SetConforming(int on) { state_->conforming = on; }
void CPDFdoc::FontNo(int id) { state_->style.font = id; }
void CPDFdoc::FontSize(int size) { state_->style.size = size; }
void CPDFdoc::BoldOn() { state_->style.bold = true; }
void CPDFdoc::BoldOff() { state_->style.bold = false; }
void CPDFdoc::ItalicOn() { state_->style.italic = true; }
void CPDFdoc::ItalicOff() { state_->style.italic = false; }
void CPDFdoc::ColorOn(_RGB_COLOR color) { state_->style.color = color; }
void CPDFdoc::ColorOff() { state_->style.color = kBlack; }

void CPDFdoc::Paragraf(ParType type) {
  state_->whileWhole([&](Document& document) {
    if (document.beginParagraph(state_->lastId)) {
      state_->style.paragraphType = type;
    }
  });
}

void CPDFdoc::write(const wchar_t* text) {
  state_->whileWhole([&](Document& document) { document.write(text, state_->style); });
}

void CPDFdoc::LineBreak() { write(L"\n"); }

void CPDFdoc::BeginTable() {
  state_->whileWhole([&](Document& document) { document.beginTable(state_->lastId); });
}

void CPDFdoc::EndTable() {
  state_->whileWhole([](Document& document) { document.endTable(); });
}

void CPDFdoc::BeginRow(int columns) {
  state_->whileWhole([&](Document& document) { document.beginRow(state_->lastId, columns); });
}

void CPDFdoc::EndRow() {
  state_->whileWhole([](Document& document) { document.endRow(); });
}

void CPDFdoc::BeginCell(_RGB_COLOR background) {
  state_->whileWhole([&](Document& document) { document.beginCell(state_->lastId, background); });
}

void CPDFdoc::EndCell() {
  state_->whileWhole([](Document& document) { document.endCell(); });
}

void CPDFdoc::BookMark(const wchar_t* name) {
  state_->whileWhole([&](Document& document) { document.bookMark(viewOf(name)); });
}

void CPDFdoc::HyperLink(const wchar_t* text, const wchar_t* target) {
  state_->whileWhole([&](Document& document) { document.link(state_->lastId, text, viewOf(target), state_->style); });
}

void CPDFdoc::AddOutlineItem(const wchar_t* text, const wchar_t* target, int level) {
  state_->whileWhole(
      [&](Document& document) { document.addOutlineItem(state_->lastId, text, viewOf(target), level, state_->style); });
}

void CPDFdoc::PageBreak() {
  state_->whileWhole([](Document& document) {
    if (document.isMakingPages()) {
      document.pages().breakPage();
    }
  });
}

unsigned long CPDFdoc::GetNextID() { return ++state_->lastId; }

PDFStuffer::CPDFPage* CPDFdoc::GetCurrentPage() {
  return state_->document ? state_->document->pages().current() : nullptr;
}

int CPDFdoc::GetFontIdx(int font, bool bold, bool italic) {
  return state_->document ? state_->document->fonts().variantOf(font, bold, italic) : font;
}

float CPDFdoc::GetAvrCharWidth(int font, int size, int bold) {
  return state_->document ? state_->document->fonts().averageWidth(font, size, bold != 0)
                          : FontTable().averageWidth(font, size, bold != 0);
}

int CPDFdoc::GetNextUnusedFontIdx() { return state_->document ? state_->document->fonts().nextUnusedId() : 1; }

void CPDFdoc::CreateFonts() {
  state_->whileWhole([](Document& document) { document.addBoldVariants(); });
}

void CPDFdoc::GeneratePages() {
  state_->whileWhole([](Document& document) { document.makePages(); });
}

void CPDFdoc::StartPage() {
  state_->whileWhole([](Document& document) {
    if (document.isMakingPages()) {
      document.pages().startPage();
    }
  });
}

void CPDFdoc::FinishPage() {
  state_->whileWhole([](Document& document) {
    if (document.isMakingPages()) {
      document.pages().finishPage();
    }
  });
}

int CPDFdoc::EndDoc(const wchar_t* pageMode) {
  if (!state_->document) {
    return 0;
  }
  CreateFonts();
  GeneratePages();
  state_->whileWhole([&](Document& document) {
    std::u16string mode;
    appendUtf16(mode, pageMode ? pageMode : L"UseNone");
    document.setPageMode(mode);
    document.save();
    if (!document.writeError().empty()) {
      state_->failure.keep(document.writeError());
    }
  });
  Delete();
  return state_->failure.empty() ? 0 : -1;
}

void CPDFdoc::Delete() {
  if (state_->document) {
    state_->last = state_->document->summary();
  }
  state_->document.reset();
  state_->lastId = 0;
}

const wchar_t* CPDFdoc::WriteError() const { return state_->failure.c_str(); }
std::uint64_t CPDFdoc::LostCharacters() const { return state_->summary().loss.count(); }
char32_t CPDFdoc::FirstLostCharacter() const { return state_->summary().loss.first(); }
