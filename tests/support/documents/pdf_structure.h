#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace scrivalen::test {

/// Reads the structure of a PDF as this library writes it, only by its cross-reference table, and collects whatever is
/// wrong. Any bytes may be given.
///
/// Texts of the classic form are not escaped, so a line of text that looks like an entry is taken for one.
class PdfStructure {
 public:
  /// @param bytes       the whole file; must outlive this
  /// @param conforming  whether stream lengths are true; else they are declared twice as long
  PdfStructure(std::string_view bytes, bool conforming);

  /// The problems found, each with its place; empty for a correct file.
  const std::vector<std::string>& problems() const { return problems_; }

  /// The number of objects in the table.
  std::size_t objectCount() const { return count_; }
  /// The bytes of an object, from its number to the blank line after it; objects count from 1. Empty for a missing
  /// object.
  std::string_view object(std::size_t number) const;
  /// A value in an object's dictionary, as written; empty without the entry.
  std::string_view entry(std::size_t number, std::string_view key) const;

  std::size_t pageCount() const { return pages_.size(); }
  /// The numbers of the pages, in their order.
  const std::vector<std::size_t>& pages() const { return pages_; }
  /// The bytes between "stream" and "endstream" of a page; pages count from 0.
  std::string_view content(std::size_t page) const;

 private:
  struct Object {
    std::string_view text;  // from its number to the blank line
    std::string_view stream;
    bool hasStream = false;
    std::map<std::string_view, std::string_view> entries;  // the top level of the dictionary
  };

  // The outline or one of its entries, while the entries below it are followed.
  struct OutlineLevel {
    std::size_t node;
    std::size_t entry;  // the next one below the node
    std::size_t previous = 0;
    std::size_t own = 0;
    std::size_t all = 0;
  };

  void readTable(std::size_t start);
  void checkTail(std::size_t afterTable, std::size_t start);
  bool readLine(std::size_t number, std::string_view line);
  void readObject(std::size_t number, std::size_t offset);
  std::size_t readEntries(Object& object, std::size_t at) const;
  std::size_t endOfValue(std::size_t at) const;
  std::size_t readStream(Object& object, std::size_t at, std::size_t number);
  bool isUnwrittenOutline(std::size_t number) const;
  void checkReferences();
  void checkReferencesIn(std::size_t number, std::string_view value);
  void checkDestinations();
  void checkDestination(std::size_t number, std::string_view value);
  void checkPages();
  void checkPage(std::size_t page);
  void checkFonts(std::size_t page, const std::vector<std::size_t>& fonts);
  void checkAnnotations();
  void checkOutline();
  std::size_t checkEntriesOf(std::size_t root);
  std::size_t finishLevel(const OutlineLevel& level);
  bool isOf(std::size_t number, std::string_view type) const { return entry(number, "Type") == type; }
  std::vector<std::size_t> allOf(std::string_view type) const;
  std::size_t reference(std::size_t number, std::string_view key) const;
  void expect(bool good, const std::string& problem);

  std::string_view bytes_;
  bool conforming_;
  std::size_t count_ = 0;
  std::size_t end_ = 0;  // of the objects read so far
  std::map<std::size_t, Object> objects_;
  std::vector<std::size_t> pages_;
  std::vector<std::string> problems_;
};

}  // namespace scrivalen::test
