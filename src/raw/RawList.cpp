#include "raw/RawList.h"

#include "raw/RawRegion.h"

#include <new>

namespace RawLayer {

namespace {

RawListData* ringIn(RawRegion& region) {
  auto* data = new (region.take(sizeof(RawListData))) RawListData;
  data->hasPieces = true;
  return data;
}

void destroyRing(RawListData* data) {
  if (!data->hasPieces) {
    delete data;
    return;
  }
  data->~RawListData();
  RawRegion::give(data);
}

RawListNode* makeNode(const RawListData* data, RawRegion* region) {
  if (!data->hasPieces) return new RawListNode;
  void* memory = region != nullptr ? region->take(sizeof(RawListNode))
                                   : RawRegion::takeAlone(sizeof(RawListNode));
  return new (memory) RawListNode;
}

void destroyNode(const RawListData* data, RawListNode* node) {
  if (data->hasPieces)
    RawRegion::give(node);
  else
    delete node;
}

} // namespace

RawListData::RawListData() : sentinel{&sentinel, &sentinel, &sentinel} {}

RawListBody::RawListBody(Allocator* allocator) : data_(new RawListData), allocator_(allocator) {}

RawListBody::RawListBody(Allocator* allocator, RawRegion& region)
    : data_(ringIn(region)), allocator_(allocator) {}

RawListBody::RawListBody(Allocator* allocator, const RawListBody& shared)
    : data_(shared.data_), allocator_(allocator) {
  data_->references.fetch_add(1, std::memory_order_relaxed);
}

RawListNode* RawListBody::nodeAt(int32_t index) const {
  if (index < 0 || index >= count()) return end();
  RawListNode* node = first();
  while (index-- > 0) node = node->next;
  return node;
}

int32_t RawListBody::indexOf(const RawListNode* node) const {
  int32_t index = 0;
  for (const RawListNode* each = first(); !isEnd(each); each = each->next, ++index)
    if (each == node) return index;
  return -1;
}

void RawListBody::erase(RawListNode* node) {
  if (isEnd(node)) return;
  allocator_->release(unlinkElement(node));
}

void RawListBody::clear() {
  while (!isEnd(first())) erase(first());
}

void RawListBody::shareRing(const RawListBody& other) {
  RawListData* shared = other.data_;
  shared->references.fetch_add(1, std::memory_order_relaxed);
  releaseRing();
  data_ = shared;
}

void RawListBody::renewRing() {
  releaseRing();
  data_ = new RawListData;
}

void RawListBody::renewRing(RawRegion& region) {
  releaseRing();
  data_ = ringIn(region);
}

void RawListBody::releaseRing() {
  if (data_->references.fetch_sub(1, std::memory_order_acq_rel) == 0) {
    clear();
    destroyRing(data_);
  }
  data_ = nullptr;
}

RawListNode* RawListBody::insertElement(RawListNode* before, void* element, RawRegion* region) {
  RawListNode* node = makeNode(data_, region);
  *node = {before->previous, before, element};
  before->previous->next = node;
  before->previous = node;
  ++data_->count;
  return node;
}

void* RawListBody::unlinkElement(RawListNode* node) {
  if (isEnd(node)) return nullptr;
  void* element = node->element;
  node->previous->next = node->next;
  node->next->previous = node->previous;
  --data_->count;
  destroyNode(data_, node);
  return element;
}

bool RawListBody::containsElement(const void* element) const {
  for (const RawListNode* node = first(); !isEnd(node); node = node->next)
    if (node->element == element) return true;
  return false;
}

// The moved node is hooked in elsewhere as it is: that saves an allocation for each move.
static void moveBefore(RawListNode* node, RawListNode* place) {
  node->previous->next = node->next;
  node->next->previous = node->previous;
  node->previous = place->previous;
  node->next = place;
  place->previous->next = node;
  place->previous = node;
}

void RawListSort::sort(RawListNode* first, RawListNode* end, bool descending) {
  while (first != end) {
    RawListNode* const pivot = first;
    RawListNode* front = first;
    if (pivot->next == end) return;
    for (RawListNode* node = pivot->next; node != end;) {
      RawListNode* const following = node->next;
      const int32_t order = compareElements(pivot->element, node->element);
      if (descending ? order < 0 : order > 0) {
        moveBefore(node, front);
        front = node;
      }
      node = following;
    }
    sort(front, pivot, descending);
    first = pivot->next;
  }
}

} // namespace RawLayer
