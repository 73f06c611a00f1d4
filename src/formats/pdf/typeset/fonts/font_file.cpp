#include "formats/pdf/typeset/fonts/font_file.h"

#include "formats/pdf/typeset/fonts/cff_charset.h"
#include "formats/pdf/typeset/fonts/font_directory.h"

#include <hb-ot.h>
#include <hb-subset.h>
#include <hb.h>

#include <algorithm>
#include <cerrno>
#include <iterator>
#include <new>
#include <utility>

namespace scrivalen::typeset {
namespace {

template <typename Type, void (*destroy)(Type*)>
struct Destroy {
  void operator()(Type* object) const { destroy(object); }
};

using Blob = std::unique_ptr<hb_blob_t, Destroy<hb_blob_t, hb_blob_destroy>>;
using Face = std::unique_ptr<hb_face_t, Destroy<hb_face_t, hb_face_destroy>>;
using Font = std::unique_ptr<hb_font_t, Destroy<hb_font_t, hb_font_destroy>>;
using Buffer = std::unique_ptr<hb_buffer_t, Destroy<hb_buffer_t, hb_buffer_destroy>>;
using SubsetPlan = std::unique_ptr<hb_subset_plan_t, Destroy<hb_subset_plan_t, hb_subset_plan_destroy>>;
using SubsetInput = std::unique_ptr<hb_subset_input_t, Destroy<hb_subset_input_t, hb_subset_input_destroy>>;

constexpr hb_tag_t kHead = HB_TAG('h', 'e', 'a', 'd');
constexpr hb_tag_t kCff = HB_TAG('C', 'F', 'F', ' ');
constexpr hb_tag_t kCff2 = HB_TAG('C', 'F', 'F', '2');
constexpr hb_tag_t kGlyphs = HB_TAG('g', 'l', 'y', 'f');
constexpr hb_tag_t kPlaces = HB_TAG('l', 'o', 'c', 'a');
constexpr hb_tag_t kOs2 = HB_TAG('O', 'S', '/', '2');
constexpr hb_tag_t kPost = HB_TAG('p', 'o', 's', 't');

// What a font in a PDF does not need: its layout, kerning, names and signature, its variations and its colours.
constexpr hb_tag_t kDropped[] = {
    HB_TAG('G', 'S', 'U', 'B'), HB_TAG('G', 'P', 'O', 'S'), HB_TAG('G', 'D', 'E', 'F'), HB_TAG('k', 'e', 'r', 'n'),
    HB_TAG('D', 'S', 'I', 'G'), HB_TAG('n', 'a', 'm', 'e'), HB_TAG('F', 'F', 'T', 'M'), HB_TAG('g', 'a', 's', 'p'),
    HB_TAG('O', 'S', '/', '2'), HB_TAG('m', 'e', 't', 'a'), HB_TAG('f', 'v', 'a', 'r'), HB_TAG('g', 'v', 'a', 'r'),
    HB_TAG('a', 'v', 'a', 'r'), HB_TAG('c', 'v', 'a', 'r'), HB_TAG('H', 'V', 'A', 'R'), HB_TAG('V', 'V', 'A', 'R'),
    HB_TAG('M', 'V', 'A', 'R'), HB_TAG('S', 'T', 'A', 'T'), HB_TAG('C', 'O', 'L', 'R'), HB_TAG('C', 'P', 'A', 'L'),
    HB_TAG('S', 'V', 'G', ' '), HB_TAG('C', 'B', 'D', 'T'), HB_TAG('C', 'B', 'L', 'C'), HB_TAG('s', 'b', 'i', 'x'),
    HB_TAG('M', 'A', 'T', 'H'), HB_TAG('B', 'A', 'S', 'E'), HB_TAG('v', 'h', 'e', 'a'), HB_TAG('v', 'm', 't', 'x'),
    HB_TAG('V', 'O', 'R', 'G')};

// HarfBuzz goes on without what it has no memory for, which mostly shows in wrong glyphs alone. But the C library notes
// each allocation that fails.
class MemoryWatch {
 public:
  MemoryWatch() { errno = 0; }
  bool hasRunOut() const { return errno == ENOMEM; }
  /// Raises std::bad_alloc if memory has run out.
  void check() const {
    if (hasRunOut()) {
      throw std::bad_alloc();
    }
  }
};

// The numbers of a table; zeros past its end.
class TableBytes {
 public:
  TableBytes(hb_face_t* face, hb_tag_t tag) : blob_(hb_face_reference_table(face, tag)) {
    unsigned size = 0;
    const char* data = hb_blob_get_data(blob_.get(), &size);
    bytes_ = std::string_view(data, size);
  }
  std::size_t size() const { return bytes_.size(); }
  int signedAt(std::size_t at) const { return static_cast<std::int16_t>(unsignedAt(at)); }
  unsigned unsignedAt(std::size_t at) const { return byteAt(at) << 8 | byteAt(at + 1); }

 private:
  unsigned byteAt(std::size_t at) const { return at < bytes_.size() ? static_cast<unsigned char>(bytes_[at]) : 0; }

  Blob blob_;
  std::string_view bytes_;
};

// Of several bits for how a font may be embedded, the one that allows most counts.
Embedding embeddingOf(unsigned fsType) {
  constexpr unsigned kKinds = 0x000F;
  constexpr unsigned kRestricted = 0x0002;
  constexpr unsigned kNoSubset = 0x0100;
  constexpr unsigned kBitmaps = 0x0200;
  if ((fsType & kKinds) == kRestricted) {
    return Embedding::Forbidden;
  }
  if ((fsType & kBitmaps) != 0) {
    return Embedding::OnlyBitmaps;
  }
  return (fsType & kNoSubset) != 0 ? Embedding::OnlyWhole : Embedding::Allowed;
}

struct InvisibleRange {
  char32_t first;
  char32_t last;
};

// Default_Ignorable_Code_Point of Unicode 15.0, which HarfBuzz knows too but has no call for.
constexpr InvisibleRange kInvisible[] = {
    {0xAD, 0xAD},     {0x34F, 0x34F},   {0x61C, 0x61C},     {0x115F, 0x1160},   {0x17B4, 0x17B5},  {0x180B, 0x180F},
    {0x200B, 0x200F}, {0x202A, 0x202E}, {0x2060, 0x206F},   {0x3164, 0x3164},   {0xFE00, 0xFE0F},  {0xFEFF, 0xFEFF},
    {0xFFA0, 0xFFA0}, {0xFFF0, 0xFFF8}, {0x1BCA0, 0x1BCA3}, {0x1D173, 0x1D17A}, {0xE0000, 0xE0FFF}};

std::string nameIn(hb_face_t* face, hb_ot_name_id_t id) {
  char name[128];
  unsigned size = sizeof name;
  hb_ot_name_get_utf8(face, id, HB_LANGUAGE_INVALID, &size, name);
  return std::string(name, std::min<std::size_t>(size, sizeof name - 1));
}

}  // namespace

struct FontFile::Handles {
  std::string data;
  Face face;
  Font font;
  Buffer buffer;
};

FontFile::FontFile(std::unique_ptr<Handles> handles) : handles_(std::move(handles)) {}
FontFile::~FontFile() = default;

std::unique_ptr<FontFile> FontFile::read(std::string data, unsigned index, std::string& reason) {
  reason = problemOf(data, index);
  if (!reason.empty()) {
    return nullptr;
  }
  const MemoryWatch memory;
  // Without memory at its first use it knows nothing of characters for good.
  if (hb_unicode_funcs_get_default() == hb_unicode_funcs_get_empty()) {
    throw std::bad_alloc();
  }
  auto handles = std::make_unique<Handles>();
  handles->data = std::move(data);
  const Blob blob(hb_blob_create(handles->data.data(), static_cast<unsigned>(handles->data.size()),
                                 HB_MEMORY_MODE_READONLY, nullptr, nullptr));
  handles->face.reset(hb_face_create(blob.get(), index));
  handles->font.reset(hb_font_create(handles->face.get()));
  handles->buffer.reset(hb_buffer_create());
  std::unique_ptr<FontFile> file(new FontFile(std::move(handles)));
  file->measure();
  file->readNames();
  const char* const problem = file->problem();
  memory.check();
  if (problem != nullptr) {
    reason = problem;
    return nullptr;
  }
  return file;
}

// Why PDF cannot have the font; null if it can.
const char* FontFile::problem() const {
  hb_face_t* const face = handles_->face.get();
  const auto has = [face](hb_tag_t tag) { return TableBytes(face, tag).size() > 0; };
  if (hb_face_get_glyph_count(face) == 0 || !has(kHead)) {
    return "it is no TrueType or OpenType font";
  }
  if (has(kCff) || (has(kGlyphs) && has(kPlaces))) {
    return nullptr;
  }
  return has(kCff2) ? "its outlines are in the form CFF2, which PDF does not have"
                    : "it has no outlines that PDF can have";
}

int FontFile::thousandths(std::int64_t units) const {
  constexpr std::int64_t kMost = 100'000'000;
  const std::int64_t twice = units * 2000;
  const std::int64_t rounded = (twice + (twice < 0 ? -unitsPerEm_ : unitsPerEm_)) / (2 * unitsPerEm_);
  return static_cast<int>(std::clamp(rounded, -kMost, kMost));
}

void FontFile::measure() {
  hb_face_t* const face = handles_->face.get();
  hb_font_t* const font = handles_->font.get();
  unitsPerEm_ = hb_face_get_upem(face);
  const auto metric = [&](hb_ot_metrics_tag_t tag, int otherwise) {
    hb_position_t position = 0;
    return hb_ot_metrics_get_position(font, tag, &position) ? thousandths(position) : otherwise;
  };
  FontMeasures& m = measures_;
  m.ascent = metric(HB_OT_METRICS_TAG_HORIZONTAL_ASCENDER, 800);
  m.descent = metric(HB_OT_METRICS_TAG_HORIZONTAL_DESCENDER, -200);
  m.capHeight = metric(HB_OT_METRICS_TAG_CAP_HEIGHT, 700);
  m.underlineTop = metric(HB_OT_METRICS_TAG_UNDERLINE_OFFSET, -75);
  m.underlineSize = metric(HB_OT_METRICS_TAG_UNDERLINE_SIZE, 50);
  m.strikeTop = metric(HB_OT_METRICS_TAG_STRIKEOUT_OFFSET, 300);
  m.strikeSize = metric(HB_OT_METRICS_TAG_STRIKEOUT_SIZE, 50);
  const TableBytes head(face, kHead);
  m.left = thousandths(head.signedAt(36));
  m.bottom = thousandths(head.signedAt(38));
  m.right = thousandths(head.signedAt(40));
  m.top = thousandths(head.signedAt(42));
  const TableBytes post(face, kPost);
  m.italicAngle = post.signedAt(4);
  m.isFixedPitch = post.unsignedAt(12) != 0 || post.unsignedAt(14) != 0;
  isPostScript_ = TableBytes(face, kCff).size() > 0;
  embedding_ = embeddingOf(TableBytes(face, kOs2).unsignedAt(8));
}

void FontFile::readNames() {
  hb_face_t* const face = handles_->face.get();
  names_.postScript = nameIn(face, HB_OT_NAME_ID_POSTSCRIPT_NAME);
  if (names_.postScript.empty()) {
    names_.postScript = "Font";
  }
  names_.family = nameIn(face, HB_OT_NAME_ID_FONT_FAMILY);
  names_.wholeFamily = nameIn(face, HB_OT_NAME_ID_TYPOGRAPHIC_FAMILY);
  names_.full = nameIn(face, HB_OT_NAME_ID_FULL_NAME);
  const unsigned style = TableBytes(face, kHead).unsignedAt(44);  // macStyle
  names_.isBold = (style & 1) != 0;
  names_.isItalic = (style & 2) != 0;
}

std::uint32_t FontFile::glyphOf(char32_t c) const {
  const MemoryWatch memory;
  hb_codepoint_t glyph = 0;
  const bool isFound = hb_font_get_nominal_glyph(handles_->font.get(), c, &glyph) != 0;
  memory.check();
  return isFound ? glyph : 0;
}

int FontFile::advanceOf(std::uint32_t glyph) const {
  const MemoryWatch memory;
  const hb_position_t advance = hb_font_get_glyph_h_advance(handles_->font.get(), glyph);
  memory.check();
  return thousandths(advance);
}

bool FontFile::isNothing(std::uint32_t glyph) const {
  const MemoryWatch memory;
  hb_glyph_extents_t box{};
  const bool isKnown = hb_font_get_glyph_extents(handles_->font.get(), glyph, &box) != 0;
  memory.check();
  return isKnown && box.width == 0 && box.height == 0 && advanceOf(glyph) == 0;
}

void FontFile::shape(const ShapeRequest& request, std::vector<ShapedGlyph>& glyphs) const {
  const MemoryWatch memory;
  hb_buffer_t* const buffer = handles_->buffer.get();
  hb_buffer_clear_contents(buffer);
  hb_buffer_add_utf8(buffer, request.text.data(), static_cast<int>(request.text.size()), 0, -1);
  hb_buffer_set_direction(buffer, request.isRightToLeft ? HB_DIRECTION_RTL : HB_DIRECTION_LTR);
  hb_buffer_set_script(buffer,
                       request.script == kNoScript ? HB_SCRIPT_COMMON : static_cast<hb_script_t>(request.script));
  hb_buffer_set_language(
      buffer, request.language.empty()
                  ? HB_LANGUAGE_INVALID
                  : hb_language_from_string(request.language.data(), static_cast<int>(request.language.size())));
  hb_shape(handles_->font.get(), buffer, nullptr, 0);
  unsigned count = 0;
  const hb_glyph_info_t* const infos = hb_buffer_get_glyph_infos(buffer, &count);
  const hb_glyph_position_t* const positions = hb_buffer_get_glyph_positions(buffer, nullptr);
  memory.check();
  glyphs.clear();
  for (unsigned i = 0; i < count; ++i) {
    glyphs.push_back({infos[i].codepoint, infos[i].cluster, thousandths(positions[i].x_advance),
                      thousandths(positions[i].x_offset), thousandths(positions[i].y_offset)});
  }
}

FontFile::Subset FontFile::subsetOf(std::span<const char32_t> characters, std::span<const std::uint32_t> glyphs) const {
  const MemoryWatch memory;
  const SubsetInput input(hb_subset_input_create_or_fail());
  memory.check();
  hb_set_t* const unicodes = hb_subset_input_unicode_set(input.get());
  for (const char32_t c : characters) {
    hb_set_add(unicodes, c);
  }
  hb_set_t* const kept = hb_subset_input_glyph_set(input.get());
  for (const std::uint32_t glyph : glyphs) {
    hb_set_add(kept, glyph);
  }
  hb_set_t* const dropped = hb_subset_input_set(input.get(), HB_SUBSET_SETS_DROP_TABLE_TAG);
  for (const hb_tag_t tag : kDropped) {
    hb_set_add(dropped, tag);
  }
  hb_subset_input_set_flags(input.get(), HB_SUBSET_FLAGS_NO_HINTING | HB_SUBSET_FLAGS_NOTDEF_OUTLINE);
  const SubsetPlan plan(hb_subset_plan_create_or_fail(handles_->face.get(), input.get()));
  Face subset(plan ? hb_subset_plan_execute_or_fail(plan.get()) : nullptr);
  if (memory.hasRunOut()) {
    // In place of a table that it has no memory for, the library of subsets puts an empty one of its own into a face.
    // The library of faces takes that for one to be freed, and crashes. So the faces are not freed.
    static_cast<void>(handles_->face.release());
    static_cast<void>(subset.release());
    throw std::bad_alloc();
  }
  if (!subset) {
    return {};
  }
  const Blob blob(isPostScript_ ? hb_face_reference_table(subset.get(), kCff) : hb_face_reference_blob(subset.get()));
  unsigned size = 0;
  const char* const data = hb_blob_get_data(blob.get(), &size);
  memory.check();
  Subset result{std::string(data, size), {}, {}};
  const hb_map_t* const numbers = hb_subset_plan_old_to_new_glyph_mapping(plan.get());
  for (const std::uint32_t glyph : glyphs) {
    const hb_codepoint_t number = hb_map_get(numbers, glyph);
    result.glyphs.push_back(number == HB_MAP_VALUE_INVALID ? 0 : number);
  }
  if (isPostScript_) {
    result.cids = cidsOf(result.file);
  }
  return result;
}

Script scriptOf(char32_t c) {
  const hb_script_t script = hb_unicode_script(hb_unicode_funcs_get_default(), c);
  const bool isAnywhere = script == HB_SCRIPT_COMMON || script == HB_SCRIPT_INHERITED || script == HB_SCRIPT_UNKNOWN;
  return isAnywhere ? kNoScript : static_cast<Script>(script);
}

bool isInvisible(char32_t c) {
  const auto* const range = std::lower_bound(std::begin(kInvisible), std::end(kInvisible), c,
                                             [](const InvisibleRange& each, char32_t at) { return each.last < at; });
  return range != std::end(kInvisible) && range->first <= c;
}

bool isMark(char32_t c) {
  switch (hb_unicode_general_category(hb_unicode_funcs_get_default(), c)) {
    case HB_UNICODE_GENERAL_CATEGORY_NON_SPACING_MARK:
    case HB_UNICODE_GENERAL_CATEGORY_ENCLOSING_MARK:
    case HB_UNICODE_GENERAL_CATEGORY_SPACING_MARK: return true;
    default: return false;
  }
}

bool isVirama(char32_t c) {
  return hb_unicode_combining_class(hb_unicode_funcs_get_default(), c) == HB_UNICODE_COMBINING_CLASS_VIRAMA;
}

bool needsShaping(Script script) {
  switch (script) {
    case kNoScript:
    case HB_SCRIPT_LATIN:
    case HB_SCRIPT_GREEK:
    case HB_SCRIPT_CYRILLIC:
    case HB_SCRIPT_ARMENIAN:
    case HB_SCRIPT_GEORGIAN:
    case HB_SCRIPT_HAN:
    case HB_SCRIPT_HIRAGANA:
    case HB_SCRIPT_KATAKANA:
    case HB_SCRIPT_BOPOMOFO: return false;
    default: return true;
  }
}

}  // namespace scrivalen::typeset
