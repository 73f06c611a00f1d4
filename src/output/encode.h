#pragma once

#include "output/output_buffer.h"
#include "text/loss_counter.h"

#include <string>
#include <string_view>

// Wide text straight into an output buffer. Eight characters at a time are copied and looked at as long as nothing in
// them needs care, which makes escaping and encoding cost little more than the copy.
namespace scrivalen {

/// As UTF-8; a lone surrogate becomes U+FFFD and is counted.
void putUtf8Text(OutputBuffer& out, std::wstring_view text, LossCounter& loss);

/// As UTF-8 with & < > " escaped; a character that XML 1.0 forbids (section 2.2) becomes U+FFFD and is counted.
void putQuoted(OutputBuffer& out, std::wstring_view text, LossCounter& loss);

/// As putQuoted, but text that is quoted already stays: the references that XML 1.0 (4.1, 4.6) allows.
void putQuotedOnce(OutputBuffer& out, std::wstring_view text, LossCounter& loss);

/// As UTF-8, escaped so that it is well-formed as the content of an element and text that is quoted already stays: the
/// references that XML 1.0 (4.1, 4.6) allows are left alone, every other &, every <, and a > behind ]] are escaped.
void putElementContent(OutputBuffer& out, std::wstring_view text, LossCounter& loss);

/// As UTF-16, little-endian; lone surrogates stay.
void putUtf16(OutputBuffer& out, std::wstring_view text);

/// As the low byte of each UTF-16 code unit; a character above U+00FF is counted.
void putLowBytes(OutputBuffer& out, std::wstring_view text, LossCounter& loss);

/// The text as putQuoted writes it, still wide.
std::wstring quotedText(std::wstring_view text, LossCounter& loss);

}  // namespace scrivalen
