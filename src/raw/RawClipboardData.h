// The platform's clipboard, for RawClipboard alone.
#pragma once

#include <cstddef>
#include <cstdint>

namespace RawLayer {

enum RawClipboardFormat : uint32_t { RawClipboardNarrow = 1, RawClipboardWide = 13 };

// Puts so many bytes, terminator included, in the place of all that the clipboard holds. False when
// it could not be opened or did not take them.
bool putClipboardData(RawClipboardFormat format, const void* data, std::size_t size);

} // namespace RawLayer
