#pragma once

#include "formats/pdf/objects/containers.h"
#include "formats/pdf/objects/values.h"

#include <memory>
#include <string>

namespace PDFStuffer {

class CPDFOutLine;

/// A node with child entries: the outline or one of its entries. The entries belong to the file.
class OutlineNode : public CPDFDictionary {
 public:
  explicit OutlineNode(std::uint32_t& nextObjectNumber) { objectNumber = nextObjectNumber++; }

  CPDFOutLine* first = nullptr;
  CPDFOutLine* last = nullptr;
  std::uint32_t count = 0;
};

/// The outline of a document (PDF 1.4, 8.2.2); its count includes all entries. Without entries the classic form writes
/// nothing, so that its line in the table points to the next object; the conforming form writes an empty outline.
class CPDFOutLines final : public OutlineNode {
 public:
  using OutlineNode::OutlineNode;
  void Write(CPDFMemBlock& out) override;
};

/// An entry of the outline; its count is the number of its own entries.
class CPDFOutLine final : public OutlineNode {
 public:
  explicit CPDFOutLine(std::uint32_t& nextObjectNumber) : OutlineNode(nextObjectNumber) { dictionaryFlag = false; }
  void Write(CPDFMemBlock& out) override;

  /// Appends the entry to the children of @p node, and counts it there and in the outline.
  void linkBelow(OutlineNode& node, CPDFOutLines& root);

  OutlineNode* parent = nullptr;
  CPDFOutLine* prev = nullptr;
  CPDFOutLine* next = nullptr;
  /// The title; null if it has none.
  std::unique_ptr<std::u16string> title;
  /// The target address in ASCII; if empty, the entry leads to the destination.
  std::u16string address;
  CPDFIndirectRef destination;
  CPDFNumber destLeft;
  CPDFNumber destTop;

 private:
  void addLink(const char16_t* key, const CPDFObject* node);
};

}  // namespace PDFStuffer
