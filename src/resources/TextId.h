#pragma once

/// Every text of the program by its name: the rows of Strings.def, which both the resources and this list are made
/// from. Headers only announce it (`enum class TextId : int;`), so that a new text rebuilds no more than who names
/// texts.
enum class TextId : int {
    None = 0,
#define STRING(name, id, french, english) name = id,
#include "resources/Strings.def"
#undef STRING
};
