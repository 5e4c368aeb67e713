// RawString: the one text type of the system.
//
// A value is one pointer to a shared, reference-counted body. Copies share the body, the first
// write of a sharer copies it. Every text carries an encoding code, and two texts in one
// expression may hold different ones: a text is converted only where another encoding is asked
// for. All positions and lengths count code units of the text's own encoding (bytes, or 16-bit
// units for EncodingWide), never characters. Writers copy code units as they stand and never
// convert: appending wide text to bytes truncates each unit, bytes to wide text widens each.
//
// Threads: each thread needs a RawString object of its own; the bodies behind them may be shared
// freely. One object must not be written by one thread while another reads it.
// Failure: no operation reports one. Positions out of range are clamped or read as 0, a
// conversion that fails gives an empty text. Memory that cannot be had ends the process.
#pragma once

#include "raw/RawRange.h"
#include "raw/RawStringBody.h"

#include <cstddef>
#include <cstdint>
#include <utility>

namespace RawLayer {

class RawRegion;

// The codes are numbers of the files and logs of this system; they never change.
enum RawEncoding : int32_t {
  EncodingAnsi = 0,     // the system's active code page
  EncodingShiftJis = 1, // code page 932
  EncodingUtf8 = 2,     // the default: every text made without naming a code has this one
  EncodingUtf7 = 3,     // met in text files only
  EncodingMac = 4,      // a row that nothing selects, kept for the numbering
  EncodingUtf16Be = 5,  // big-endian UTF-16 held as bytes: lengths count bytes
  EncodingUtf16Le = 6,  // little-endian UTF-16 held as bytes: lengths count bytes
  EncodingWide = 7,     // native 16-bit units: what the platform's wide calls take
  EncodingBinary = 8,   // a result of file detection: the data is not text
};

// The code (5 or 6) of UTF-16 bytes in the byte order of this machine.
int32_t rawNativeUtf16();

class RawString {
 public:
  // Who owns the memory of a text.
  enum Kind : uint8_t {
    KindEmpty = 0,  // the zero unit that all empty texts share
    KindOwned = 1,  // a heap array, freed with the body
    KindStatic = 2, // static data: shared freely, never freed
    KindView = 3,   // somebody else's memory: copied as soon as it is shared
  };

  // Platform classes of a text, see classifyForPlatform.
  enum PlatformClass : int32_t {
    PlatformNarrow = 0,  // pass the bytes to the narrow call
    PlatformWide = 1,    // pass the units to the wide call
    PlatformConvert = 2, // convert to EncodingWide, then the wide call
    PlatformEither = 3,  // empty: either call will do
  };

  // Empty, EncodingUtf8.
  RawString() noexcept;
  // Empty, with room for `capacity` units.
  explicit RawString(int32_t encoding, int32_t capacity = 0);
  // Shares the body; copies the text when `other` is a view.
  RawString(const RawString& other);
  // Takes the body over, views included; leaves `other` empty.
  RawString(RawString&& other) noexcept;
  ~RawString();
  RawString& operator=(const RawString& other);
  RawString& operator=(RawString&& other) noexcept;

  // A text is never made from a bare pointer by accident: use "..."_text, fromChars, fromWide.
  RawString(const char*) = delete;
  RawString(const char16_t*) = delete;
  RawString(std::nullptr_t) = delete;

  static RawString withCapacity(int32_t capacity);
  // The one static empty text (EncodingUtf8) that functions with nothing to say return.
  static const RawString& emptyStatic();
  // Copies zero-terminated or counted bytes, EncodingUtf8. A null pointer or a count below 1 gives
  // an empty text.
  static RawString fromChars(const char* text);
  static RawString fromChars(const char* text, int32_t count);
  // Copies zero-terminated or counted 16-bit units, EncodingWide.
  static RawString fromWide(const char16_t* text);
  static RawString fromWide(const char16_t* text, int32_t count);
  // Copies `size` bytes of text in the given 8-bit code (or UTF-16 bytes for 5 and 6).
  static RawString fromBytes(int32_t encoding, const void* bytes, int32_t size);
  // A view: `units` stays the caller's, who keeps it alive and unchanged for as long as the value
  // lives unshared. Sharing, copying or writing it makes an owned copy.
  static RawString viewOf(int32_t encoding, const void* units, int32_t length);
  // A static text over `bytes`, which live as long as the process and end in a zero.
  static RawString fromStatic(const char* bytes, int32_t length);
  // A copy of the clamped part of `source` in a region, in its code. To writers it is a static
  // text.
  static RawString fromRegion(RawRegion& region, const RawString& source, RawRange range);
  // The clamped part of `source` in the given code, converted when the codes differ.
  static RawString fromRange(int32_t encoding, const RawString& source, RawRange range);
  // A new text with the code of `a`.
  static RawString concat(const RawString& a, const RawString& b,
                          const RawString& c = emptyStatic(), const RawString& d = emptyStatic(),
                          const RawString& e = emptyStatic());
  static RawString fromBool(bool flag); // "True" or "False"
  static RawString fromInt64(int64_t value);
  static RawString fromUInt64(uint64_t value, int32_t base);
  static RawString fromDigits(uint64_t value, int32_t base, int32_t width);

  // --- Reading
  [[nodiscard]] int32_t encoding() const { return body_->encoding; }
  [[nodiscard]] int32_t length() const { return body_->length; }
  // Units that fit without a new allocation.
  [[nodiscard]] int32_t capacity() const { return body_->capacity; }
  [[nodiscard]] bool isEmpty() const { return length() == 0; }
  // First byte (8-bit codes) or first 16-bit unit (EncodingWide). Followed by a zero unit, except
  // for a view. Each accessor is for its own kind of code only.
  [[nodiscard]] const char* text() const { return static_cast<const char*>(body_->text); }
  [[nodiscard]] const char16_t* wide() const { return static_cast<const char16_t*>(body_->text); }
  // The unit widened to 16 bits; 0 for a position that is negative or not below the length.
  [[nodiscard]] uint16_t at(int32_t position) const {
    if (position < 0 || position >= length()) return 0;
    return encoding() == EncodingWide ? wide()[position] : static_cast<uint8_t>(text()[position]);
  }
  [[nodiscard]] RawRange all() const { return {0, length()}; }
  // For tests and for owners of buffers. Nobody counts the sharers of KindEmpty.
  [[nodiscard]] Kind kind() const { return static_cast<Kind>(body_->kind); }
  [[nodiscard]] int32_t references() const; // sharers beyond the first

  // --- Ownership
  // The text in the given code: the same body when it has that code and is no view, else a copy.
  [[nodiscard]] RawString shareAs(int32_t encoding) const;
  void release(); // becomes empty, EncodingUtf8
  void assign(const RawString& other);
  void assignConverted(int32_t encoding, const RawString& other);
  // Makes this a view, reusing the own body where it can; see viewOf for the caller's duties.
  void assignView(int32_t encoding, const void* units, int32_t length);
  // To be called before any write through mutableText or mutableWide.
  void unshare();
  // Room for exactly so many units, but never for less than the text; the text becomes KindOwned.
  void reserve(int32_t capacity);
  // What the platform may write into after unshare and reserve: capacity units and a terminator.
  [[nodiscard]] char* mutableText();
  [[nodiscard]] char16_t* mutableWide();
  void syncLength();              // the length up to the first zero unit, never above the capacity
  void setLength(int32_t length); // cut down to the capacity

  // --- Writing; each unshares first, none converts
  void appendChar(uint16_t unit);
  void append(const RawString& source);
  void append(const RawString& source, RawRange range);
  void append5(const RawString& a, const RawString& b, const RawString& c = emptyStatic(),
               const RawString& d = emptyStatic(), const RawString& e = emptyStatic());
  void assignChars(const RawString& source);
  // Moves the tail; the caller fills the gap, and had better make room before.
  void insertGap(int32_t position, int32_t count);
  void removeRange(int32_t position, int32_t count);
  void replaceRange(RawRange range, const RawString& source, RawRange sourceRange);
  void insertUnderscore(int32_t position);
  void appendInt64(int64_t value);
  void appendUInt64(uint64_t value, int32_t base);
  void appendDigits(uint64_t value, int32_t base, int32_t width);

  // --- Comparing: code unit values widened to 16 bits, so ASCII is equal across encodings
  [[nodiscard]] bool equals(const RawString& other) const;
  [[nodiscard]] bool equalsNoCase(const RawString& other) const;
  [[nodiscard]] bool rangeEquals(RawRange range, const RawString& other, RawRange otherRange) const;
  [[nodiscard]] bool rangeEqualsNoCase(RawRange range, const RawString& other,
                                       RawRange otherRange) const;
  [[nodiscard]] bool equalsAt(int32_t position, const RawString& other, int32_t otherStart,
                              int32_t count) const;
  [[nodiscard]] bool startsWithAt(int32_t position, const RawString& other, int32_t count) const;
  [[nodiscard]] int32_t compare(const RawString& other) const; // -1, 0, 1
  [[nodiscard]] int32_t compareNoCase(const RawString& other) const;

  // --- Scanning
  [[nodiscard]] int32_t extraUnits(int32_t position) const;
  [[nodiscard]] bool isOneOf(int32_t position, const RawString& set) const;
  [[nodiscard]] bool containsChar(uint16_t unit) const;
  [[nodiscard]] int32_t findChar(RawRange range, uint16_t unit) const;
  [[nodiscard]] int32_t findCharFrom(int32_t position, uint16_t unit) const;
  [[nodiscard]] int32_t find(RawRange range, const RawString& other, RawRange otherRange) const;
  [[nodiscard]] int32_t find(const RawString& other) const; // whole in whole; the length when not
  [[nodiscard]] int32_t findLastOf(RawRange range, const RawString& set) const;
  [[nodiscard]] int32_t findLastSeparator(RawRange range) const;
  [[nodiscard]] int32_t skipSet(int32_t position, const RawString& set) const;
  [[nodiscard]] int32_t findSet(int32_t position, const RawString& set) const;
  [[nodiscard]] RawRange trimRange(RawRange range, const RawString& set) const;
  [[nodiscard]] int32_t classifyForPlatform() const;
  // The class for one call with several texts: any 2 gives 2; all 0 or 3 gives 0; all 1 or 3 gives
  // 1; the rest gives 2. Three empties give 0.
  static int32_t combinePlatformClasses(int32_t a, int32_t b, int32_t c = PlatformEither);

  // Line ends become "\n" and tabs "\t", each as two characters; EncodingUtf8.
  static RawString escapeControls(const RawString& source);

  static const RawString& whiteSpace(); // blank, tab
  static const RawString& lineSpace();  // blank, tab, carriage return, line feed

 private:
  explicit RawString(RawStringBody* body) noexcept : body_(body) {}
  RawStringBody* body_;
};

// ASCII case folding, the only one there is: a to z lose 0x20.
constexpr uint16_t rawFold(uint16_t unit) {
  return unit >= u'a' && unit <= u'z' ? static_cast<uint16_t>(unit - 0x20) : unit;
}

// The bytes of a literal as a template argument.
template <std::size_t Size>
struct RawLiteralBytes {
  char bytes[Size];
  // NOLINTNEXTLINE: implicit on purpose, the literal operator asks for it.
  constexpr RawLiteralBytes(const char (&source)[Size]) {
    for (std::size_t i = 0; i < Size; ++i) bytes[i] = source[i];
  }
};

inline namespace RawLiterals {
// "..."_text: a literal of the program as a static text that lives to the end of the process (no
// destructor runs for it, so it may be used in any other static's destructor).
template <RawLiteralBytes Literal>
const RawString& operator""_text() {
  static const RawString& text = *new RawString(
      RawString::fromStatic(Literal.bytes, static_cast<int32_t>(sizeof Literal.bytes) - 1));
  return text;
}
} // namespace RawLiterals

} // namespace RawLayer
