#pragma once

#include <string>
#include <vector>

namespace scrivalen::xlsx {

/// A reference of one part of a package to another, or to an address.
struct Relation {
  std::string type;  ///< the last part of its URI
  std::string target;
  bool isExternal = false;
};

/// The part that holds the references of another; their ids are rId1, rId2, ...
std::string relationsXml(const std::vector<Relation>& relations);

}  // namespace scrivalen::xlsx
