#pragma once

#include <functional>
#include <string>

#include "LedgerUI/Presentation/Print/PrintedPages.h"

/// What is read back from a PDF when its text is searched or copied.
///
/// The writer names each glyph after the first code point that the font shows by it, so that common Chinese characters
/// come back as the radicals that look like them, and blanks as tabs.
namespace PdfText {

/// The code point to read for one that the writer chose: one that the document holds and the fonts show alike.
using Reading = std::function<char16_t(char16_t written)>;
Reading readingOf(const PrintedPages& pages);

/// The document with its glyphs read so, as an update added to its end. A document that is not built as the writer
/// builds them is left as it is.
std::string corrected(std::string pdf, const Reading& reading);

}
