// RawListR, RawListP: the one collection of the system, a doubly linked ring with a sentinel in a
// reference-counted body.
//
// The node is the iterator. RawListR owns its elements through its allocator: `append` takes
// ownership, `unlink` hands it back. RawListP does not own its records. Copying a list takes a
// reference on the same ring, so a change through one copy shows in the other; only lists that are
// RawDataShared::Duplicator make themselves private before a change.
//
// A list that is filled at once and by thousands may lie in a RawRegion with its nodes. It is a
// list like all others then.
//
// Threads: only the count of sharers is safe by itself. Whoever shares a list across threads
// guards every walk and change with a lock of his own.
// Failure: none. At the sentinel `element` gives null.
//
//   class RawNameListAllocator : public RawListAllocator<Name> {
//   public:
//     void destroy(Name* element) override { delete element; }
//   };
//   class RawNameList : public RawListR<RawNameListAllocator, Name> {};
#pragma once

#include <atomic>
#include <cstdint>

namespace RawLayer {

struct RawListNode {
  RawListNode* previous;
  RawListNode* next;
  void* element; // the node's own address at the sentinel
};

// The ring that sharers have in common.
struct RawListData {
  RawListData();
  std::atomic<int32_t> references{0}; // sharers beyond the first
  RawListNode sentinel;
  int32_t count = 0;
  bool hasPieces = false; // this and all nodes are pieces of RawRegion, in a region or alone
};

class RawRegion;

class RawListProperty {
 public:
  // Destroys elements. Slot order: destructor, release.
  class Allocator {
   public:
    virtual ~Allocator() = default;
    virtual void release(void* element) = 0;
  };
};

template <class T>
class RawListAllocator : public RawListProperty::Allocator {
 public:
  void release(void* element) override { destroy(static_cast<T*>(element)); }
  virtual void destroy(T* element) = 0;
};

// The untyped list: a reference on a ring and the allocator that destroys elements.
class RawListBody : public RawListProperty {
 public:
  RawListBody(const RawListBody&) = delete;
  RawListBody& operator=(const RawListBody&) = delete;

  [[nodiscard]] int32_t count() const { return data_->count; }
  [[nodiscard]] RawListNode* first() const { return data_->sentinel.next; }
  [[nodiscard]] RawListNode* last() const { return data_->sentinel.previous; }
  [[nodiscard]] RawListNode* end() const { return &data_->sentinel; }
  [[nodiscard]] static RawListNode* next(const RawListNode* node) { return node->next; }
  [[nodiscard]] static RawListNode* previous(const RawListNode* node) { return node->previous; }
  [[nodiscard]] static bool isEnd(const RawListNode* node) { return node->element == node; }
  // The node at a position counted from 0; the sentinel outside the list. Walks.
  [[nodiscard]] RawListNode* nodeAt(int32_t index) const;
  // The position of a node; -1 when it is not in this ring. Walks.
  [[nodiscard]] int32_t indexOf(const RawListNode* node) const;

  void erase(RawListNode* node); // unlink, then release; nothing at the sentinel
  void clear();
  // Whether both share one ring: the identity, not the content.
  [[nodiscard]] bool isSameList(const RawListBody& other) const { return data_ == other.data_; }
  [[nodiscard]] int32_t references() const { return data_->references.load(); }

 protected:
  explicit RawListBody(Allocator* allocator);
  RawListBody(Allocator* allocator, RawRegion& region); // the ring lies in the region
  RawListBody(Allocator* allocator, const RawListBody& shared);
  ~RawListBody() = default;

  void shareRing(const RawListBody& other); // gives the own ring up
  void renewRing();                         // gives the own ring up for a new, empty one
  void renewRing(RawRegion& region);        // the new one lies in the region
  void releaseRing();                       // for destructors: no ring is left
  // With a region the node is taken from there, if the ring lies in one, too.
  RawListNode* insertElement(RawListNode* before, void* element, RawRegion* region = nullptr);
  void* unlinkElement(RawListNode* node);
  [[nodiscard]] bool containsElement(const void* element) const;

 private:
  friend class RawListSort;
  RawListData* data_;
  Allocator* allocator_;
};

// The typed operations that both families share.
template <class T>
class RawListBodyTyped : public RawListBody {
 public:
  [[nodiscard]] static T* element(const RawListNode* node) {
    return isEnd(node) ? nullptr : static_cast<T*>(node->element);
  }
  // Each gives the new node.
  RawListNode* append(T* item) { return insertElement(end(), item); }
  RawListNode* prepend(T* item) { return insertElement(first(), item); }
  RawListNode* insertBefore(RawListNode* node, T* item) { return insertElement(node, item); }
  RawListNode* append(T* item, RawRegion& region) { return insertElement(end(), item, &region); }
  // Takes the node out and hands its element to the caller; null at the sentinel.
  T* unlink(RawListNode* node) { return static_cast<T*>(unlinkElement(node)); }
  [[nodiscard]] bool contains(const T* item) const { return containsElement(item); }

  // Walks the elements: `for (T& unit : list.elements())`. The list must not change meanwhile.
  class Iterator {
   public:
    explicit Iterator(RawListNode* node) : node_(node) {}
    T& operator*() const { return *static_cast<T*>(node_->element); }
    Iterator& operator++() {
      node_ = node_->next;
      return *this;
    }
    bool operator!=(const Iterator& other) const { return node_ != other.node_; }

   private:
    RawListNode* node_;
  };
  struct Elements {
    const RawListBodyTyped* list;
    [[nodiscard]] Iterator begin() const { return Iterator(list->first()); }
    [[nodiscard]] Iterator end() const { return Iterator(list->RawListBody::end()); }
  };
  [[nodiscard]] Elements elements() const { return {this}; }

 protected:
  using RawListBody::RawListBody;
};

template <class T>
class RawListBodyR : public RawListBodyTyped<T> {
 protected:
  using RawListBodyTyped<T>::RawListBodyTyped;
};

template <class T>
class RawListBodyP : public RawListBodyTyped<T> {
 protected:
  using RawListBodyTyped<T>::RawListBodyTyped;
};

// The list that owns its elements: A is the allocator class, whose `destroy` deletes.
template <class A, class T>
class RawListR : public A, public RawListBodyR<T> {
 public:
  RawListR() : RawListBodyR<T>(static_cast<RawListProperty::Allocator*>(this)) {}
  explicit RawListR(RawRegion& region)
      : RawListBodyR<T>(static_cast<RawListProperty::Allocator*>(this), region) {}
  RawListR(const RawListR& other)
      : A(), RawListBodyR<T>(static_cast<RawListProperty::Allocator*>(this), other) {}
  RawListR& operator=(const RawListR& other) {
    if (this != &other) this->shareRing(other);
    return *this;
  }
  // The ring is emptied here, while the allocator's `destroy` is still in force.
  ~RawListR() override { this->releaseRing(); }
};

// The list that does not own its records: its allocator's `destroy` does nothing.
template <class A, class T>
class RawListP : public A, public RawListBodyP<T> {
 public:
  RawListP() : RawListBodyP<T>(static_cast<RawListProperty::Allocator*>(this)) {}
  RawListP(const RawListP& other)
      : A(), RawListBodyP<T>(static_cast<RawListProperty::Allocator*>(this), other) {}
  RawListP& operator=(const RawListP& other) {
    if (this != &other) this->shareRing(other);
    return *this;
  }
  ~RawListP() override { this->releaseRing(); }
};

// Data that is shared until someone writes.
class RawDataShared {
 public:
  // Slot order: destructor, duplicate.
  class Duplicator {
   public:
    virtual ~Duplicator() = default;
    // Makes the data private: a deep copy when others share it, nothing otherwise.
    virtual void duplicate() = 0;
  };
};

// A shared list held by value as a resource.
template <class T>
class RawRes : public T {
 public:
  using T::T;
};

// The one sort of all lists: a quicksort that moves nodes on the ring. Equal elements keep no
// order. A sorted list costs the square of its length, which is accepted: lists here are short.
class RawListSort {
 public:
  explicit RawListSort(RawListBody& list) : list_(&list) {}
  // Slot order: compareElements, destructor, then RawListSortR's compare.
  // Below, at or above 0 as `a` sorts before, with or behind `b`.
  virtual int32_t compareElements(const void* a, const void* b) = 0;
  virtual ~RawListSort() = default;

  // Sorts the nodes from `first` up to, and without, `end`.
  void sort(RawListNode* first, RawListNode* end, bool descending);
  void sortAll(bool descending = false) { sort(list_->first(), list_->end(), descending); }

 protected:
  RawListSort(const RawListSort&) = default;
  RawListSort& operator=(const RawListSort&) = default;

 private:
  RawListBody* list_;
};

template <class T>
class RawListSortR : public RawListSort {
 public:
  using RawListSort::RawListSort;
  int32_t compareElements(const void* a, const void* b) override {
    return compare(static_cast<const T*>(a), static_cast<const T*>(b));
  }
  virtual int32_t compare(const T* a, const T* b) = 0;
};

} // namespace RawLayer
