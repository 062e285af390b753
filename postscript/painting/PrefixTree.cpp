#include "postscript/painting/PrefixTree.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace postscript {

namespace {

// How many bytes are the same at the start of both. Whole blocks first, as they compare fast.
size_t commonLength(std::string_view a, std::string_view b) {
  constexpr size_t block = 256;
  const size_t limit = std::min(a.size(), b.size());
  size_t at = 0;
  while (limit - at >= block && std::memcmp(a.data() + at, b.data() + at, block) == 0) {
    at += block;
  }
  while (at < limit && a[at] == b[at]) {
    ++at;
  }
  return at;
}

}  // namespace

size_t PrefixTree::find(std::string_view bytes) const {
  if (nodes_.empty()) {
    return none;
  }
  const Place place = walk(bytes);
  return place.consumed == bytes.size() ? nodes_[place.node].first : none;
}

void PrefixTree::add(std::string_view string, size_t number) {
  if (nodes_.size() + 3 > nodes_.capacity()) {
    nodes_.reserve(2 * nodes_.size() + 3);
  }
  if (nodes_.empty()) {
    nodes_.push_back({{}, number, {}});
  }
  const Place place = walk(string);
  // An older string begins with all of this one: it is found for each of its beginnings.
  if (place.consumed == string.size()) {
    return;
  }
  if (place.matched < nodes_[place.node].edge.size()) {
    split(place.node, place.matched);
  }
  nodes_[place.node].children.push_back(static_cast<uint32_t>(nodes_.size()));
  nodes_.push_back({string.substr(place.consumed), number, {}});
}

PrefixTree::Place PrefixTree::walk(std::string_view bytes) const {
  Place place{0, 0, 0};
  while (place.consumed < bytes.size()) {
    const uint32_t child = childOf(nodes_[place.node], bytes[place.consumed]);
    if (child == 0) {
      break;
    }
    const std::string_view edge = nodes_[child].edge;
    const size_t same = commonLength(edge, bytes.substr(place.consumed));
    place = {child, same, place.consumed + same};
    if (same < edge.size()) {
      break;
    }
  }
  return place;
}

uint32_t PrefixTree::childOf(const Node& node, char byte) const {
  const auto found = std::find_if(node.children.begin(), node.children.end(), [&](uint32_t child) {
    return nodes_[child].edge.front() == byte;
  });
  return found == node.children.end() ? 0 : *found;
}

// The node keeps its place in the tree with the first part of its edge. A new node, below it, takes
// over the second part and the children.
void PrefixTree::split(uint32_t node, size_t length) {
  Node below{nodes_[node].edge.substr(length), nodes_[node].first, {}};
  std::vector<uint32_t> children;
  children.reserve(2);
  children.push_back(static_cast<uint32_t>(nodes_.size()));
  nodes_[node].edge = nodes_[node].edge.substr(0, length);
  below.children = std::exchange(nodes_[node].children, std::move(children));
  nodes_.push_back(std::move(below));
}

}  // namespace postscript
