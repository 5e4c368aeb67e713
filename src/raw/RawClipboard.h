// The clipboard's text. The platform lets one thread at a time open it: a call made while another
// holds it fails.
#pragma once

#include "raw/RawString.h"

namespace RawLayer {

// The part up to its first zero unit takes the place of all that is there. Plain ASCII and texts in
// codes 0 and 1 go out as narrow text, all others as wide text. False when the clipboard could not
// be opened or did not take it.
bool setClipboard(const RawString& text, RawRange range);
// At most `limit` units, always EncodingWide; empty when there is no text.
RawString getClipboard(int32_t limit);

} // namespace RawLayer
