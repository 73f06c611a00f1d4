#pragma once

#include "formats/pdf/layout/document.h"
#include "formats/pdf/layout/text_style.h"
#include "output/contain.h"
#include "output/output_buffer.h"
#include "output/reason.h"
#include "scrivalen/pdf_doc.h"
#include "system/files/files.h"

#include <cstdint>
#include <memory>

/// What a CPDFdoc keeps; null where there was no memory for it, and calls then do nothing. The report begins its
/// document here, to write through the buffer of its own file.
struct CPDFdoc::State {
  /// @return 0; -3 when the document could not be made, for the reason in failure
  int begin(scrivalen::NativeFile file, int landscape);
  int begin(scrivalen::OutputBuffer& output, int landscape);
  void reset();

  // Calls without an open document do nothing, nor do those after the first failure, which EndDoc reports.
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
  scrivalen::Reason failure;     ///< the first one of the last document
  scrivalen::pdf::Summary last;  ///< of the document that was open last

 private:
  template <typename MakeFile>
  int beginWith(int landscape, MakeFile makeFile);
};
