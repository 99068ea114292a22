#pragma once
/// \file
/// The containers that public signatures use.

#include <functional>
#include <map>
#include <utility>
#include <vector>

/// A growable contiguous sequence, counted from 0. A function that fills one clears it first.
template <class T> using ISequence = std::vector<T>;

/// Unique keys in the order of Compare, each with a value.
template <class K, class V, class Compare = std::less<K>> using IKeySortedSet = std::map<K, V, Compare>;

template <class K, class PointerToValue, class Map = std::map<K, PointerToValue>> class KivValueDelMap;

/// A map that owns the objects its values point to: its destructor and its clear delete them. erase does not, and neither
/// does overwriting a value. Moving transfers the ownership; it cannot be copied.
///
/// The map is not polymorphic. Called through a pointer or a reference to the base type Map, clear only empties the map: the
/// objects leak. Deleting the map through a pointer to Map is undefined. Pass it by its own type.
template <class K, class V, class Map> class KivValueDelMap<K, V *, Map> : public Map {
public:
  using Map::Map;

  KivValueDelMap() = default;
  KivValueDelMap(KivValueDelMap const &) = delete;
  KivValueDelMap & operator=(KivValueDelMap const &) = delete;
  KivValueDelMap(KivValueDelMap && other) noexcept { this->swap(other); }
  KivValueDelMap & operator=(KivValueDelMap && other) noexcept {
    this->swap(other);
    return *this;
  }

  ~KivValueDelMap() { clear(); }

  /// Deletes each value and empties the map. This hides the clear of Map, which does not delete.
  void clear() noexcept {
    for (auto const & entry : *this)
      delete entry.second;
    Map::clear();
  }
};
