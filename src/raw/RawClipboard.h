// The clipboard's text. The platform lets one thread at a time open it: a call made while another
// holds it fails.
#pragma once

#include "raw/RawString.h"

namespace RawLayer {

// The part up to its first zero unit. ANSI text goes out as narrow text, all other as wide text.
bool setClipboard(const RawString& text, RawRange range);
// At most `limit` units, EncodingWide; empty when there is no text.
RawString getClipboard(int32_t limit);

} // namespace RawLayer
