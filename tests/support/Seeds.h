// Seed files for fuzzing and for sweeps: small valid files that together have every section and every key.
#pragma once

#include <string>
#include <vector>

struct Seed
{
    std::string name;
    std::string bytes;
};

const std::vector<Seed>& Seeds();
