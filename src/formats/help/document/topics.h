#pragma once

#include "document/model/writer.h"
#include "formats/help/document/code_page.h"
#include "formats/help/document/language.h"
#include "formats/help/document/page_file.h"
#include "formats/markup/html/html_page.h"
#include "formats/markup/html/html_page_set.h"
#include "output/output_buffer.h"
#include "system/files/work_folder.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace scrivalen::help {

/// The topics of a help file: pages, and the pictures in them, in a private folder, which is removed with this object.
/// A page is written before the places that it links to are known, so links are completed at the end.
class Topics : private document::HtmlPageSet {
 public:
  /// Creates the folder and reads the template.
  /// @param codePage  not owned; must outlive this object, as what the context refers to
  Topics(const document::WriterContext& context, const CodePage& codePage, std::string_view charset);
  ~Topics() override;

  /// Ends the page, if there is one, and begins another.
  void begin(std::string_view title);
  void end();
  /// Writes the current page. There must be one.
  document::DocumentWriter& page() { return *page_->writer; }
  bool isEmpty() const { return pages_.empty(); }

  /// Makes the links lead to their places. After the last page.
  void completeLinks();

  const std::wstring& folder() const { return folder_.path(); }
  std::wstring pathOf(std::string_view file) const;
  /// The names of the files.
  const std::vector<std::string>& pages() const { return pages_; }
  const std::vector<std::string>& pictures() const { return pictures_; }

 private:
  struct OpenPage {
    OpenPage(const std::wstring& path, const CodePage& codePage) : file(path, codePage), out(file) {}

    PageFile file;
    OutputBuffer out;
    std::unique_ptr<document::DocumentWriter> writer;
    bool hasOpenLinks = false;  // links to places that are not known yet
  };

  static constexpr std::size_t kNowhere = static_cast<std::size_t>(-1);

  struct Place {
    std::size_t page = kNowhere;  // an index in pages_
    std::size_t number = 0;       // an index in linked_, if the place is in it
    bool isLinked = false;        // before it was known
  };
  using Places = std::map<std::string, Place, std::less<>>;

  void addPlace(std::string_view id) override;
  std::string addressOf(std::string_view id) override;
  std::string addressOf(const document::Picture& picture) override;
  std::string markupOf(std::string_view markup) override;

  void addPlacesOf(std::string_view markup);
  std::string knownAddress(std::string_view id, const Place& place, std::size_t fromPage) const;
  bool isPicture(const std::string& file, std::string_view bytes) const;
  void completeLinks(std::size_t page);
  void copyWithLinks(std::size_t page, const std::wstring& completed) const;

  document::WriterContext context_;
  const CodePage& codePage_;
  WorkFolder folder_;
  std::unique_ptr<document::HtmlPageFrame> frame_;
  std::unique_ptr<OpenPage> page_;
  std::vector<std::string> pages_;
  std::vector<std::string> pictures_;
  std::multimap<std::uint64_t, std::size_t> pictureNumbers_;  // by a sum of the bytes: indexes in pictures_
  std::vector<std::size_t> openLinkPages_;                    // pages with links that are not complete
  Places places_;
  std::vector<Places::const_iterator> linked_;
};

}  // namespace scrivalen::help
