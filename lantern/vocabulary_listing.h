// The printed form of a module's vocabulary, for lantern --list.
#pragma once

#include <string>
#include <vector>

#include "lantern/host/module_host.h"

namespace qrl {

// "int text [int]": the type of each position a call may give, the optional
// ones in brackets.
std::string DescribeArguments(const VocabularyRow& row);

// One line per row under a heading: row, kind, name, the required and
// optional counts and argument types of a function, the value of a constant.
std::string FormatVocabulary(const std::vector<VocabularyRow>& rows);

}  // namespace qrl
