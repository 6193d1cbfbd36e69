#include "app/LineMerge.h"

#include <gtest/gtest.h>

namespace zw {
namespace {

using Lines = std::vector<std::string>;

TEST(LineMerge, WhatEachProgramDidSurvivesTheOther)
{
    struct Row
    {
        const char* name;
        Lines loaded, mine, onDisk, merged;
    };
    const Row rows[] = {
        {"nobody else wrote: mine as it is", {"a", "b"}, {"b", "a", "c"}, {"a", "b"}, {"b", "a", "c"}},
        {"both added", {"a"}, {"a", "mein"}, {"a", "fremd"}, {"a", "mein", "fremd"}},
        {"added at the top", {"a"}, {"mein", "a"}, {"a", "fremd"}, {"mein", "a", "fremd"}},
        {"I removed, they added", {"a", "b"}, {"b"}, {"a", "b", "fremd"}, {"b", "fremd"}},
        {"they removed, I added", {"a", "b"}, {"a", "b", "mein"}, {"b"}, {"b", "mein"}},
        {"my edit of a row they removed comes back", {"a", "b"}, {"a2", "b"}, {"b"}, {"a2", "b"}},
        {"both edited other rows", {"a", "b"}, {"a2", "b"}, {"a", "b2"}, {"a2", "b2"}},
        {"one of two equal rows removed", {"x", "x"}, {"x"}, {"x", "x", "y"}, {"x", "y"}},
        {"a removed row they removed too goes once", {"a", "b"}, {"b"}, {"b"}, {"b"}},
        {"the file emptied elsewhere keeps my new row", {"a"}, {"a", "mein"}, {}, {"mein"}},
    };
    for (const Row& row : rows)
        EXPECT_EQ(mergeLineChanges(row.loaded, row.mine, row.onDisk), row.merged) << row.name;
}

} // namespace
} // namespace zw
