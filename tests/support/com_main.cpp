#define DOCTEST_CONFIG_IMPLEMENT
#include "doctest/doctest.h"

#include "automation/windows_headers.h"

int main(int argc, char** argv) {
    if (FAILED(OleInitialize(nullptr))) return 1;
    doctest::Context context(argc, argv);
    const int result = context.run();
    OleUninitialize();
    return result == 0 ? 0 : 1;
}
