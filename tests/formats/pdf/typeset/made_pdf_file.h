#pragma once

#include "formats/pdf/typeset/file/pdf_file.h"
#include "output/output_buffer.h"

#include <string>

namespace scrivalen::test {

/// A PDF file that is made in memory.
class MadePdfFile {
 public:
  MadePdfFile() { file.begin(); }

  /// Ends the file. @return its bytes
  std::string finished(const typeset::FileRoots& roots = {1, 2}) {
    file.finish(roots);
    buffer_.flush();
    return sink_.bytes;
  }

 private:
  struct Sink : ByteSink {
    bool take(const char* data, std::size_t size) override {
      bytes.append(data, size);
      return true;
    }
    std::string bytes;
  };

  Sink sink_;
  OutputBuffer buffer_{sink_};

 public:
  typeset::PdfFile file{buffer_};
};

}  // namespace scrivalen::test
