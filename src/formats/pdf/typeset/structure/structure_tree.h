#pragma once

#include "formats/pdf/typeset/file/pdf_file.h"
#include "formats/pdf/typeset/file/syntax.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace scrivalen::typeset {

/// A structure element whose kids are not all known (PDF 1.7, 14.7.2).
struct Element {
  Element() = default;
  Element(int itsNumber, int itsParent, std::string_view itsRole)
      : number(itsNumber), parent(itsParent), role(itsRole) {}

  int number = 0;  ///< 0: it is none
  int parent = 0;
  std::string_view role;        ///< a literal
  std::string_view attributes;  ///< entries of its dictionary; a literal
  std::string texts;            ///< more entries
  std::size_t count = 0;        ///< of its kids
  int page = 0;                 ///< of its first content

  void addKid(int element) { addToRun(RunKind::Elements, element); }
  /// Adds marked content of a page.
  void addContent(int onPage, int id);
  /// Adds an annotation of a page.
  void addAnnotation(int onPage, int annotation);
  void appendTo(std::string& object) const;

 private:
  // Most elements have one kid, or kids with consecutive numbers.
  enum class RunKind : unsigned char { None, Elements, Contents };

  std::size_t mostOfRun() const { return static_cast<std::size_t>(runCount_) * (1 + kMostOfReference); }
  void addToRun(RunKind kind, int kid);
  void endRun();
  void appendRun(Operators& out) const;

  std::string kids_;  // those before the run
  RunKind runKind_ = RunKind::None;
  int runFirst_ = 0;
  int runCount_ = 0;
};

/// Writes the structure elements while the document comes: each when its last kid is known. Only those that are open
/// are kept. One with very many kids has them in groups, so that this is not much.
class StructureTree {
 public:
  /// @param file  not owned; must outlive this object
  explicit StructureTree(PdfFile& file);

  /// Begins an element in the innermost one that is open. @param texts  more entries of its dictionary
  void begin(std::string_view role, std::string_view attributes = {}, std::string texts = {});
  void end();
  /// Adds an element to the innermost one that is open. The caller writes it.
  Element add(std::string_view role, std::string_view attributes = {});
  /// Adds an element to another that is not written yet.
  Element addTo(Element& parent, std::string_view role);
  void write(const Element& element);
  /// Ends all elements and writes the root. @param parents  the number of the root of the parent tree
  int finish(int parents, std::int64_t nextKey);

 private:
  struct Open {
    Element element;
    Element group = {};
  };

  // More kids than this are in groups of as many.
  static constexpr std::size_t kMostKids = 1024;

  Element& parentOfNext();

  PdfFile& file_;
  int root_;
  std::vector<Open> open_;
};

}  // namespace scrivalen::typeset
