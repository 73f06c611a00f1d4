#include "formats/pdf/typeset/fonts/font_file.h"

#include <hb-ot.h>
#include <hb-subset.h>
#include <hb.h>

#include <algorithm>
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
using SubsetInput = std::unique_ptr<hb_subset_input_t, Destroy<hb_subset_input_t, hb_subset_input_destroy>>;

constexpr hb_tag_t kHead = HB_TAG('h', 'e', 'a', 'd');
constexpr hb_tag_t kPost = HB_TAG('p', 'o', 's', 't');

// What a font in a PDF needs no more: its layout, kerning, names and signature.
constexpr hb_tag_t kDropped[] = {HB_TAG('G', 'S', 'U', 'B'), HB_TAG('G', 'P', 'O', 'S'), HB_TAG('G', 'D', 'E', 'F'),
                                 HB_TAG('k', 'e', 'r', 'n'), HB_TAG('D', 'S', 'I', 'G'), HB_TAG('n', 'a', 'm', 'e'),
                                 HB_TAG('F', 'F', 'T', 'M'), HB_TAG('g', 'a', 's', 'p'), HB_TAG('O', 'S', '/', '2'),
                                 HB_TAG('m', 'e', 't', 'a')};

// The numbers of a table; zeros past its end.
class TableBytes {
 public:
  TableBytes(hb_face_t* face, hb_tag_t tag) : blob_(hb_face_reference_table(face, tag)) {
    unsigned size = 0;
    const char* data = hb_blob_get_data(blob_.get(), &size);
    bytes_ = std::string_view(data, size);
  }
  int signedAt(std::size_t at) const { return static_cast<std::int16_t>(unsignedAt(at)); }
  unsigned unsignedAt(std::size_t at) const { return byteAt(at) << 8 | byteAt(at + 1); }

 private:
  unsigned byteAt(std::size_t at) const { return at < bytes_.size() ? static_cast<unsigned char>(bytes_[at]) : 0; }

  Blob blob_;
  std::string_view bytes_;
};

}  // namespace

struct FontFile::Handles {
  std::string data;
  Face face;
  Font font;
};

FontFile::FontFile(std::unique_ptr<Handles> handles) : handles_(std::move(handles)) {}
FontFile::~FontFile() = default;

std::unique_ptr<FontFile> FontFile::read(std::string data, unsigned index, std::string& reason) {
  auto handles = std::make_unique<Handles>();
  handles->data = std::move(data);
  const Blob blob(hb_blob_create(handles->data.data(), static_cast<unsigned>(handles->data.size()),
                                 HB_MEMORY_MODE_READONLY, nullptr, nullptr));
  if (hb_face_count(blob.get()) <= index) {
    reason = "is no TrueType or OpenType font";
    return nullptr;
  }
  handles->face.reset(hb_face_create(blob.get(), index));
  if (hb_face_get_glyph_count(handles->face.get()) == 0) {
    reason = "is no TrueType or OpenType font";
    return nullptr;
  }
  handles->font.reset(hb_font_create(handles->face.get()));
  std::unique_ptr<FontFile> file(new FontFile(std::move(handles)));
  file->measure();
  return file;
}

int FontFile::thousandths(std::int64_t units) const {
  const std::int64_t twice = units * 2000;
  return static_cast<int>((twice + (twice < 0 ? -unitsPerEm_ : unitsPerEm_)) / (2 * unitsPerEm_));
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
  char name[64];
  unsigned size = sizeof name;
  hb_ot_name_get_utf8(face, HB_OT_NAME_ID_POSTSCRIPT_NAME, HB_LANGUAGE_INVALID, &size, name);
  postScriptName_ = size > 0 ? std::string(name, size) : "Font";
}

std::uint32_t FontFile::glyphOf(char32_t c) const {
  hb_codepoint_t glyph = 0;
  return hb_font_get_nominal_glyph(handles_->font.get(), c, &glyph) ? glyph : 0;
}

int FontFile::advanceOf(std::uint32_t glyph) const {
  return thousandths(hb_font_get_glyph_h_advance(handles_->font.get(), glyph));
}

std::string FontFile::subsetOf(std::span<const char32_t> characters) const {
  const SubsetInput input(hb_subset_input_create_or_fail());
  if (!input) {
    throw std::bad_alloc();
  }
  hb_set_t* const unicodes = hb_subset_input_unicode_set(input.get());
  for (const char32_t c : characters) {
    hb_set_add(unicodes, c);
  }
  hb_set_t* const dropped = hb_subset_input_set(input.get(), HB_SUBSET_SETS_DROP_TABLE_TAG);
  for (const hb_tag_t tag : kDropped) {
    hb_set_add(dropped, tag);
  }
  hb_subset_input_set_flags(input.get(), HB_SUBSET_FLAGS_NO_HINTING);
  const Face subset(hb_subset_or_fail(handles_->face.get(), input.get()));
  if (!subset) {
    return {};
  }
  const Blob blob(hb_face_reference_blob(subset.get()));
  unsigned size = 0;
  const char* data = hb_blob_get_data(blob.get(), &size);
  return std::string(data, size);
}

}  // namespace scrivalen::typeset
