#include "mapping/property_names.h"

#include <set>

#include "doctest/doctest.h"
#include "support/text_output.h"

using namespace tessera;

TEST_CASE("names and constants lead to each other, exactly compared") {
    PropertyNameTable table;
    CHECK(table.find(u"1") == u"Description");
    CHECK(table.find(u"52") == u"GetInternationalDescription2");
    CHECK(table.find(u"Description") == u"1");
    CHECK(table.find(u"3") == u"Fullname");
    CHECK_FALSE(table.find(u"FullName").has_value());
    CHECK_FALSE(table.find(u"01").has_value());
}

TEST_CASE("an unknown key is unknown once and empty from then on") {
    PropertyNameTable table;
    CHECK_FALSE(table.find(u"99").has_value());
    CHECK(table.find(u"99") == u"");
    CHECK_FALSE(table.find(u"98").has_value());
}

TEST_CASE("every property has a constant of its own, and an operation only when it needs one") {
    std::set<int> constants;
    for (const KnownProperty& property : known_properties()) {
        CHECK(constants.insert(property.constant).second);
        CHECK(property.operation.empty() == (property.write_back != WriteBack::operation));
    }
    CHECK(constants.size() == 25);
}
