// Small whole files which together have every section and every key, for others to damage.
#pragma once

#include <string>
#include <vector>

struct Seed
{
    std::string name;
    std::string bytes;
};

const std::vector<Seed>& Seeds();
