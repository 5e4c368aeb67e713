// WinBitmapPool: icons of one size as a column of cells in one array of 32-bit pixels.
// WinBitmapPoolEx: the same with cells that can be freed, and with its file.
//
// A cell is filled from an icon of the platform, scaled by WinScaler, and drawn over what a device
// context shows. The number of a cell stays valid whatever the pool grows to. All cells together
// may have MostBytes. No lock: the owner guards the pool.
#pragma once

#include "win/WinPoolPlatform.h"

#include "raw/RawBitArray.h"
#include "raw/RawFile.h"

namespace WinLayer {

class WinBitmapPool {
 public:
  static constexpr int64_t MostBytes = INT32_MAX; // what one read or write can carry
  static constexpr int32_t MostSide = 4096;       // pixels of a cell's width or height
  int32_t growStep = 50;                          // cells

  WinBitmapPool() = default;
  WinBitmapPool(const WinBitmapPool&) = delete;
  WinBitmapPool& operator=(const WinBitmapPool&) = delete;

  virtual void release();        // frees everything; the cell size stays
  virtual void clearCells();     // frees all cells
  virtual int32_t acquireCell(); // the next cell, which need not lie below the capacity
  virtual ~WinBitmapPool() = default;

  // In pixels, MostSide at most; beyond, and below 0, it is 0 and there can be no cells. Another
  // size than before frees all cells.
  void setCellSize(int32_t width, int32_t height);
  // Makes room for so many cells, new ones without a visible pixel. A smaller count does nothing
  // and is true; false when they would be too big.
  bool reserveCells(int32_t count);
  bool reserveScratch(int64_t size); // pixels of the greatest icon to come

  // The new cell, or -1 when the icon cannot be read.
  int32_t addIcon(void* icon);
  // Fills a cell again; false when it is not below the capacity or the icon cannot be read, which
  // leaves the cell as it was.
  bool storeIcon(int32_t cell, void* icon);
  // Blends the cell over the context's rectangle, scaled to it. Nothing is drawn when there is no
  // such cell, or when the platform has no surface for it.
  void drawCell(int32_t cell, void* context, const WinRect& rectangle);

  [[nodiscard]] WinSize cellSize() const { return {cellWidth_, cellHeight_}; }
  [[nodiscard]] WinSize storeSize() const { return {storeWidth_, storeHeight_}; }
  [[nodiscard]] int32_t capacity() const { return capacity_; }   // cells
  [[nodiscard]] int32_t usedCells() const { return usedCells_; } // one past the last ever taken
  // The first pixel of a cell, whose rows follow without a gap; null when it is not below the
  // capacity. Valid up to the next growth.
  [[nodiscard]] const uint32_t* cellPixels(int32_t cell) const;

 protected:
  [[nodiscard]] int64_t cellBytes() const { return int64_t{cellWidth_} * cellHeight_ * 4; }
  [[nodiscard]] uint32_t* cellAt(int32_t cell) const;
  // A store of so many cells in the place of the present one, its pixels not yet written.
  std::unique_ptr<uint32_t[]> replaceStore(int32_t count);
  void clearFrom(int32_t cell); // all pixels from this cell on
  void setUsedCells(int32_t count) { usedCells_ = count; }

 private:
  bool readIcon(void* icon);
  void storeScratch(int32_t cell);

  std::unique_ptr<WinPoolSurface> surface_;
  std::unique_ptr<uint32_t[]> pixels_;
  WinIconPixels scratch_;
  int32_t cellWidth_ = 0;
  int32_t cellHeight_ = 0;
  int32_t storeWidth_ = 0; // pixels
  int32_t storeHeight_ = 0;
  int32_t capacity_ = 0; // cells
  int32_t usedCells_ = 0;
};

class WinBitmapPoolEx : public WinBitmapPool {
 public:
  static constexpr int32_t MostStoredCells = 1000;
  // As many words as that could ever need, and as many again.
  static constexpr int32_t MostStoredWords = 64;

  void release() override;
  void clearCells() override;
  int32_t acquireCell() override; // the lowest free one
  void freeCell(int32_t cell);    // its pixels stay until it is taken again
  [[nodiscard]] bool isTaken(int32_t cell) const { return cells_.testBit(cell); }

  // Writes all cells; false when a write failed, or when there are more than may be stored.
  bool save(const RawLayer::RawFileOwner& file) const;
  // Replaces all cells by the file's. False when it holds cells of another size or too many of
  // them, or ends before its last pixel; the pool is empty then. Memory is taken only for what
  // the file really holds.
  bool load(const RawLayer::RawFileOwner& file);

 private:
  bool readCells(const RawLayer::RawFileOwner& file);
  RawLayer::RawBitArray cells_{50};
};

} // namespace WinLayer
