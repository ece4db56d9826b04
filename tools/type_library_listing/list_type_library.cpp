// Prints what a DLL's type library says.
//
//     list_type_library FILE
#include <cstdio>

#include "automation/error.h"
#include "type_library_listing.h"

int wmain(int count, wchar_t** arguments) {
    if (count != 2) {
        std::fputs("list_type_library FILE\n", stderr);
        return 2;
    }
    try {
        std::fputs(tools::list_type_library(arguments[1]).c_str(), stdout);
        return 0;
    } catch (...) {
        std::fprintf(stderr, "%ls\n", automation::current_error().description.view().data());
        return 1;
    }
}
