// Project files that could have been, made from real ones.
#pragma once

#include <random>
#include <string>
#include <vector>

class ProjectInputs_cls {
public:
    /// Lines of all projects of the checkout.
    ProjectInputs_cls();
    /// A few stretches of lines and blocks of keys, with some of them spoilt.
    std::string Make(std::mt19937& random) const;
    bool IsEmpty() const { return mProjects.empty(); }

private:
    using Lines = std::vector<std::string>;
    static void AddKeys(std::mt19937& random, Lines* pLines);
    static void AddFilters(std::mt19937& random, Lines* pLines);
    static void SpoilLine(std::mt19937& random, std::string* pLine);

    std::vector<Lines> mProjects;
};
