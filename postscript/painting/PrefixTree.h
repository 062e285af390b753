// PrefixTree: finds the first of many byte strings that begins with given bytes. It is a radix
// tree: each edge is a stretch of one of the strings, strings share the edges of what they have in
// common, and each node knows the oldest string below it. A search compares every byte that is
// sought once at most, however many strings there are and however long they are the same.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace postscript {

class PrefixTree {
 public:
  static constexpr size_t none = SIZE_MAX;

  // The number of the first string that begins with the bytes, or none.
  size_t find(std::string_view bytes) const;
  // Numbers must rise from call to call, and the string must outlive the tree. If memory runs out
  // the string is not in the tree.
  void add(std::string_view string, size_t number);

 private:
  struct Node {
    std::string_view edge;           // what leads to the node, never empty
    size_t first;                    // the number of the oldest string through here
    std::vector<uint32_t> children;  // places in nodes_; their edges differ in the first byte
  };
  // How far bytes lead: down to `node`, of whose edge `matched` bytes are the same. The other
  // bytes, from `consumed` on, lead nowhere.
  struct Place {
    uint32_t node;
    size_t matched;
    size_t consumed;
  };

  Place walk(std::string_view bytes) const;
  // The child whose edge begins with the byte; 0 if there is none.
  uint32_t childOf(const Node& node, char byte) const;
  void split(uint32_t node, size_t length);

  std::vector<Node> nodes_;  // the root first; empty before the first string
};

}  // namespace postscript
