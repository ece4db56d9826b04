#include "script/script_text.h"

#include "doctest/doctest.h"
#include "support/text_output.h"

using namespace tessera;

TEST_CASE("the default script is the stored one to the character") {
    const std::u16string stars(77, u'*');
    const std::u16string expected =
        u"Sub DoVex()\r\n"
        u"'" +
        stars +
        u"\r\n"
        u"'Automatically generated Vex-Script for IMappingTableEx'" +
        stars +
        u"\r\n"
        u"If Not MappingTableExcel Is Nothing Then\r\n"
        u"    Set MT = MappingTableExcel\r\n"
        u"    For I = 1 To MT.GetCount\r\n"
        u"       if Not MT.SourceObject(I) Is Nothing Then \r\n"
        u"          Content MT.Target(I), MT.SourceObject(I), MT.SourceProperty(I), "
        u"MT.SourceIndex(I), MT.UNIT(I),MT.IO(I)\r\n"
        u"       ElseIf Not MT.IO(I)=\"I\" Then\r\n"
        u"          ContentFix MT.Target(I), MT.Value(I)\r\n"
        u"       End If\r\n"
        u"    Next 'I\r\n"
        u"End If\r\n"
        u"'" +
        stars +
        u"\r\n"
        u"End Sub";
    CHECK(default_mapping_script() == expected);
}

TEST_CASE("a script is empty when it is nothing or only its frame, to the character") {
    CHECK(is_empty_script(u""));
    CHECK(is_empty_script(u"Sub DoVex()\r\nEnd Sub"));
    CHECK_FALSE(is_empty_script(u"Sub DoVex()\nEnd Sub"));
    CHECK_FALSE(is_empty_script(u"Sub DoVex()\r\nEnd Sub\r\n"));
    CHECK_FALSE(is_empty_script(default_mapping_script()));
}
