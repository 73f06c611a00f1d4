#pragma once

#include "output/output_buffer.h"
#include "text/loss_counter.h"

#include <string>
#include <string_view>

// Encodes wide text directly into an output buffer. Plain characters are checked and copied eight at a time, so
// escaping and encoding cost little more than a copy.
namespace scrivalen {

/// Writes UTF-8; a lone surrogate becomes U+FFFD and is counted.
void putUtf8Text(OutputBuffer& out, std::wstring_view text, LossCounter& loss);

/// Writes UTF-8 with & < > " escaped; a character that XML 1.0 forbids (section 2.2) becomes U+FFFD and is counted.
void putQuoted(OutputBuffer& out, std::wstring_view text, LossCounter& loss);

/// Like putQuoted, but keeps text that is already escaped: the references that XML 1.0 (4.1, 4.6) allows.
void putQuotedOnce(OutputBuffer& out, std::wstring_view text, LossCounter& loss);

/// Writes UTF-8 as well-formed element content: the references that XML 1.0 (4.1, 4.6) allows are kept; every other &,
/// every <, and a > after ]] are escaped.
void putElementContent(OutputBuffer& out, std::wstring_view text, LossCounter& loss);

/// Writes UTF-16, little-endian; lone surrogates are kept.
void putUtf16(OutputBuffer& out, std::wstring_view text);

/// Writes the low byte of each UTF-16 code unit; a character above U+00FF is counted.
void putLowBytes(OutputBuffer& out, std::wstring_view text, LossCounter& loss);

/// Returns the text as putQuoted escapes it, still wide.
std::wstring quotedText(std::wstring_view text, LossCounter& loss);

}  // namespace scrivalen
