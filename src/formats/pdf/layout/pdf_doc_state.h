#pragma once

#include "formats/pdf/layout/document.h"
#include "formats/pdf/layout/text_style.h"
#include "output/exception_barrier.h"
#include "output/failure_reason.h"
#include "output/output_buffer.h"
#include "scrivalen/pdf_doc.h"
#include "system/files/files.h"

#include <cstdint>
#include <memory>

/// The state of a CPDFdoc. It is null if memory ran out for it; calls then do nothing. The report begins its document
/// here, so that it writes through the buffer of its own file.
struct CPDFdoc::State {
  /// @return 0, or -3 if the document could not be created, with the reason in failure
  int begin(scrivalen::NativeFile file, int landscape);
  int begin(scrivalen::OutputBuffer& output, int landscape);
  void reset();

  // Calls do nothing without an open document and after the first failure, which EndDoc reports.
  template <typename Action>
  static void withDocument(const std::unique_ptr<State>& state, Action action) {
    if (state && state->document && state->failure.empty()) {
      scrivalen::containedIn(state->failure, [&] { action(*state->document); });
    }
  }

  template <typename Action>
  static void restyle(const std::unique_ptr<State>& state, Action action) {
    if (state) {
      action(state->style);
    }
  }

  scrivalen::pdf::Summary summary() const { return document ? document->summary() : last; }

  std::unique_ptr<scrivalen::pdf::Document> document;
  scrivalen::pdf::CPDFtextStyle style;
  std::uint32_t lastId = 0;
  int conforming = 0;
  scrivalen::Reason failure;     ///< the first failure of the last document
  scrivalen::pdf::Summary last;  ///< of the document closed last

 private:
  template <typename MakeFile>
  int beginWith(int landscape, MakeFile makeFile);
};
