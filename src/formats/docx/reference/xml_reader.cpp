#include "formats/docx/reference/xml_reader.h"

#include <expat.h>

#include <exception>
#include <memory>
#include <new>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace scrivalen::document::docx {
namespace {

struct KnownNamespace {
  std::string_view uri;
  std::string_view prefix;
};

constexpr std::string_view kStrictText = "http://purl.oclc.org/ooxml/wordprocessingml/main";

constexpr KnownNamespace kKnownNamespaces[] = {{"http://schemas.openxmlformats.org/wordprocessingml/2006/main", "w:"},
                                               {"http://schemas.openxmlformats.org/drawingml/2006/main", "a:"},
                                               {"http://schemas.openxmlformats.org/package/2006/relationships", ""}};

// What expat puts between the namespace of a name and its local part.
constexpr char kAfterNamespace = '\n';
constexpr std::string_view kUnknown = "?";

// Attributes without a prefix are in no namespace (Namespaces in XML 1.0, 6.2).
std::string knownName(std::string_view name, bool isAttribute) {
  const std::size_t end = name.find(kAfterNamespace);
  if (end == name.npos) {
    return std::string(isAttribute ? name : kUnknown);
  }
  const std::string_view uri = name.substr(0, end);
  if (uri == kStrictText) {
    throw XmlError("is in the strict form of Office Open XML; save the document as an ordinary Word document");
  }
  for (const KnownNamespace& known : kKnownNamespaces) {
    if (known.uri == uri) {
      return std::string(known.prefix).append(name.substr(end + 1));
    }
  }
  return std::string(kUnknown);
}

// Makes the tree of one text. Exceptions must not pass through expat, which is C: they wait until it has stopped.
class XmlTree {
 public:
  XmlTree();
  XmlTree(const XmlTree&) = delete;
  XmlTree& operator=(const XmlTree&) = delete;

  XmlElement read(std::string_view text);

 private:
  struct FreeParser {
    void operator()(XML_Parser parser) const { XML_ParserFree(parser); }
  };

  // An element that is open.
  struct Open {
    XmlElement element;
    bool isKept;
  };

  template <typename Handle>
  static void guard(void* data, Handle handle);
  void begin(const char* name, const char* const* attributes);
  void end();
  [[noreturn]] void fail() const;

  std::unique_ptr<std::remove_pointer_t<XML_Parser>, FreeParser> parser_;
  std::exception_ptr failure_;
  std::vector<Open> open_;
  std::size_t count_ = 0;
  XmlElement root_;
};

XmlTree::XmlTree() : parser_(XML_ParserCreateNS(nullptr, kAfterNamespace)) {
  if (parser_ == nullptr) {
    throw std::bad_alloc();
  }
  XML_SetUserData(parser_.get(), this);
  XML_SetElementHandler(
      parser_.get(),
      [](void* data, const char* name, const char** attributes) {
        guard(data, [&](XmlTree& tree) { tree.begin(name, attributes); });
      },
      [](void* data, const char*) { guard(data, [](XmlTree& tree) { tree.end(); }); });
  XML_SetStartDoctypeDeclHandler(parser_.get(), [](void* data, const char*, const char*, const char*, int) {
    guard(data, [](XmlTree&) { throw XmlError("has a document type, which is not read"); });
  });
}

// Expat may call once more after it was stopped.
template <typename Handle>
void XmlTree::guard(void* data, Handle handle) {
  XmlTree& tree = *static_cast<XmlTree*>(data);
  if (tree.failure_) {
    return;
  }
  try {
    handle(tree);
  } catch (...) {
    tree.failure_ = std::current_exception();
    XML_StopParser(tree.parser_.get(), XML_FALSE);
  }
}

XmlElement XmlTree::read(std::string_view text) {
  if (XML_Parse(parser_.get(), text.data(), static_cast<int>(text.size()), XML_TRUE) != XML_STATUS_OK) {
    fail();
  }
  return std::move(root_);
}

void XmlTree::fail() const {
  if (failure_) {
    std::rethrow_exception(failure_);
  }
  switch (XML_GetErrorCode(parser_.get())) {
    case XML_ERROR_NO_MEMORY: throw std::bad_alloc();
    case XML_ERROR_UNKNOWN_ENCODING: throw XmlError("is in an encoding that is not read");
    default: throw XmlError("is not well-formed XML");
  }
}

void XmlTree::begin(const char* name, const char* const* attributes) {
  if (++count_ > kMostXmlElements || open_.size() == kDeepestXml) {
    throw XmlError("has too many elements, or too many in each other");
  }
  Open open{{knownName(name, false)}, open_.empty() || open_.back().isKept};
  open.isKept = open.isKept && (open_.empty() || open.element.name != kUnknown);
  for (; *attributes != nullptr; attributes += 2) {
    std::string known = knownName(attributes[0], true);
    if (known != kUnknown && known.starts_with("w:") == open.element.name.starts_with("w:")) {
      open.element.attributes.push_back({std::move(known), attributes[1]});
    }
  }
  open_.push_back(std::move(open));
}

void XmlTree::end() {
  Open open = std::move(open_.back());
  open_.pop_back();
  if (open_.empty()) {
    root_ = std::move(open.element);
  } else if (open.isKept) {
    open_.back().element.children.push_back(std::move(open.element));
  }
}

}  // namespace

XmlElement readXml(std::string_view text) { return XmlTree().read(text); }

}  // namespace scrivalen::document::docx
