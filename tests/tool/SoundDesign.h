// A design with which nothing is wrong, and how tests spoil it.
#pragma once

#include <string>
#include <vector>

// Web 30 "West": the trunk T (route 20) = spans 10, 11, 12 over nodes 2, 3, 4, 5, the tributary A (route 21) = span 13
// from node 6 into node 2. With sections, groups, and one record of each kind that lies along a route, all placed.
// Nodes 7 and 8 and all ids from 60 are free.
std::string SoundDesign();
// With further records.
std::string SoundDesignWith(const std::string& records);

// One text of it in place of another, which has to be there.
struct Change {
    std::string from;
    std::string to;
};
std::string SoundDesignWith(const std::vector<Change>& changes, const std::string& records = {});
