#include "scrivalen/pdf_doc.h"

#include "formats/pdf/fonts/win_ansi.h"
#include "formats/pdf/layout/pdf_doc_state.h"
#include "text/null_text.h"

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
    document = std::make_unique<pdf::Document>(makeFile(form), landscape ? kLandscape : kPortrait, form);
  });
  return document ? 0 : -3;
}

void CPDFdoc::State::reset() {
  document.reset();
  lastId = 0;
  style.size = CPDFtextStyle().size;
}

CPDFdoc::CPDFdoc() {
  contained([this] { state_ = std::make_unique<State>(); });
}

CPDFdoc::~CPDFdoc() { Delete(); }

void CPDFdoc::Init() {
  if (state_) {
    state_->reset();
  }
}

int CPDFdoc::BegDoc(void* file, int landscape) {
  if (IsOpen()) {
    return -1;
  }
  if (!file) {
    return -2;
  }
  return state_ ? state_->begin(file, landscape) : -3;
}

bool CPDFdoc::IsOpen() const { return state_ && state_->document; }

void CPDFdoc::AddFont(int id, PDF_STANDARD_FONT_FACE face) {
  State::withDocument(state_, [&](auto& document) { document.addFont(id, face); });
}

void CPDFdoc::SetConforming(int on) {
  if (state_) {
    state_->conforming = on;
  }
}

void CPDFdoc::FontNo(int id) {
  State::restyle(state_, [id](CPDFtextStyle& style) { style.font = id; });
}

void CPDFdoc::FontSize(int size) {
  State::restyle(state_, [size](CPDFtextStyle& style) { style.size = size; });
}

void CPDFdoc::BoldOn() {
  State::restyle(state_, [](CPDFtextStyle& style) { style.bold = true; });
}

void CPDFdoc::BoldOff() {
  State::restyle(state_, [](CPDFtextStyle& style) { style.bold = false; });
}

void CPDFdoc::ItalicOn() {
  State::restyle(state_, [](CPDFtextStyle& style) { style.italic = true; });
}

void CPDFdoc::ItalicOff() {
  State::restyle(state_, [](CPDFtextStyle& style) { style.italic = false; });
}

void CPDFdoc::ColorOn(_RGB_COLOR color) {
  State::restyle(state_, [color](CPDFtextStyle& style) { style.color = color; });
}

void CPDFdoc::ColorOff() { ColorOn(kBlack); }

void CPDFdoc::Paragraf(ParType type) {
  State::withDocument(state_, [&](auto& document) {
    if (document.beginParagraph(state_->lastId)) {
      state_->style.paragraphType = type;
    }
  });
}

void CPDFdoc::write(const wchar_t* text) {
  State::withDocument(state_, [&](auto& document) { document.write(text, state_->style); });
}

void CPDFdoc::LineBreak() { write(L"\n"); }

void CPDFdoc::BeginTable() {
  State::withDocument(state_, [&](auto& document) { document.beginTable(state_->lastId); });
}

void CPDFdoc::EndTable() {
  State::withDocument(state_, [](auto& document) { document.endTable(); });
}

void CPDFdoc::BeginRow(int columns) {
  State::withDocument(state_, [&](auto& document) { document.beginRow(state_->lastId, columns); });
}

void CPDFdoc::EndRow() {
  State::withDocument(state_, [](auto& document) { document.endRow(); });
}

void CPDFdoc::BeginCell(_RGB_COLOR background) {
  State::withDocument(state_, [&](auto& document) { document.beginCell(state_->lastId, background); });
}

void CPDFdoc::EndCell() {
  State::withDocument(state_, [](auto& document) { document.endCell(); });
}

void CPDFdoc::BookMark(const wchar_t* name) {
  State::withDocument(state_, [&](auto& document) { document.bookMark(orEmpty(name)); });
}

void CPDFdoc::HyperLink(const wchar_t* text, const wchar_t* target) {
  State::withDocument(state_,
                      [&](auto& document) { document.link(state_->lastId, text, orEmpty(target), state_->style); });
}

void CPDFdoc::AddOutlineItem(const wchar_t* text, const wchar_t* target, int level) {
  State::withDocument(state_, [&](auto& document) {
    document.addOutlineItem(state_->lastId, text, orEmpty(target), level, state_->style);
  });
}

void CPDFdoc::PageBreak() {
  State::withDocument(state_, [](auto& document) {
    if (document.isMakingPages()) {
      document.pages().breakPage();
    }
  });
}

unsigned long CPDFdoc::GetNextID() { return state_ ? ++state_->lastId : 0; }

PDFStuffer::CPDFPage* CPDFdoc::GetCurrentPage() { return IsOpen() ? state_->document->pages().current() : nullptr; }

int CPDFdoc::GetFontIdx(int font, bool bold, bool italic) {
  return IsOpen() ? state_->document->fonts().variantOf(font, bold, italic) : font;
}

float CPDFdoc::GetAvrCharWidth(int font, int size, int bold) {
  return IsOpen() ? state_->document->fonts().averageWidth(font, size, bold != 0)
                  : FontTable().averageWidth(font, size, bold != 0);
}

int CPDFdoc::GetNextUnusedFontIdx() { return IsOpen() ? state_->document->fonts().nextUnusedId() : 1; }

void CPDFdoc::CreateFonts() {
  State::withDocument(state_, [](auto& document) { document.addBoldVariants(); });
}

void CPDFdoc::GeneratePages() {
  State::withDocument(state_, [](auto& document) { document.makePages(); });
}

void CPDFdoc::StartPage() {
  State::withDocument(state_, [](auto& document) {
    if (document.isMakingPages()) {
      document.pages().startPage();
    }
  });
}

void CPDFdoc::FinishPage() {
  State::withDocument(state_, [](auto& document) {
    if (document.isMakingPages()) {
      document.pages().finishPage();
    }
  });
}

int CPDFdoc::EndDoc(const wchar_t* pageMode) {
  if (!IsOpen()) {
    return 0;
  }
  CreateFonts();
  GeneratePages();
  State::withDocument(state_, [&](auto& document) {
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
  if (!state_) {
    return;
  }
  if (state_->document) {
    state_->last = state_->document->summary();
  }
  state_->document.reset();
  state_->lastId = 0;
}

const wchar_t* CPDFdoc::WriteError() const { return state_ ? state_->failure.c_str() : kOutOfMemory; }
std::uint64_t CPDFdoc::LostCharacters() const { return state_ ? state_->summary().loss.count() : 0; }
char32_t CPDFdoc::FirstLostCharacter() const { return state_ ? state_->summary().loss.first() : 0; }
