// Levels of detail from names and attributes, and the tail of every element: object mask, clip
// distance and node id.
#include "SceneTestSupport.h"

using namespace scenetest;
using vqmtest::ExportHarness;

namespace {

std::string floatAttribute(const char* name, const char* type = "float")
{
    return std::string("\taddAttr -ci true -sn \"") + name + "\" -ln \"" + name + "\" -at \"" + type + "\";\n";
}

TEST(LevelOfDetail, NamesAndAttributesGiveTheDistances)
{
    ExportHarness h;
    ASSERT_TRUE(h.loadScene(maScene(
        "createNode transform -n \"lod_300\";\n"
        "createNode transform -n \"lod_abc\";\n"
        "createNode transform -n \"lod_12.5m\";\n"
        "createNode transform -n \"gap\";\n" +
        floatAttribute("vQM_lod1") + floatAttribute("vQM_lod2") + floatAttribute("vQM_lod3") +
        "\tsetAttr \".vQM_lod1\" 10;\n\tsetAttr \".vQM_lod2\" 0;\n\tsetAttr \".vQM_lod3\" 30;\n"
        "createNode transform -n \"full\";\n" +
        floatAttribute("vQM_lod1") + floatAttribute("vQM_lod2") + floatAttribute("vQM_lod3") +
        "\tsetAttr \".vQM_lod1\" 10;\n\tsetAttr \".vQM_lod2\" 20.5;\n\tsetAttr \".vQM_lod3\" 1234567;\n"
        "createNode transform -n \"switchedOff\";\n" +
        floatAttribute("vQM_lod", "bool") + floatAttribute("vQM_lod1") +
        "\tsetAttr \".vQM_lod\" no;\n\tsetAttr \".vQM_lod1\" 10;\n"
        "createNode transform -n \"lod_40\";\n" +
        floatAttribute("vQM_lod1") + "\tsetAttr \".vQM_lod1\" 10;\n"
        "createNode transform -n \"firstIsZero\";\n" +
        floatAttribute("vQM_lod1") + floatAttribute("vQM_lod2") + "\tsetAttr \".vQM_lod2\" 20;\n"
        "createNode transform -n \"xlod_300\";\n")));
    std::string scene = sceneOf(h.run(""));
    auto lod = [&](const char* name) { return attributeOf(elementLine(scene, name), "lodDistance"); };
    EXPECT_EQ(lod("lod_300"), "0 150");
    EXPECT_EQ(lod("lod_abc"), "0 50") << "no number: the default 100, halved";
    EXPECT_EQ(lod("lod_12.5m"), "0 6.25");
    EXPECT_EQ(lod("gap"), "0 10") << "a 0 ends the list";
    EXPECT_EQ(lod("full"), "0 10 20.5 1.23457e+06");
    EXPECT_EQ(lod("switchedOff"), "<none>");
    EXPECT_EQ(lod("lod_40"), "0 20") << "the name wins over the attributes";
    EXPECT_EQ(lod("firstIsZero"), "<none>");
    EXPECT_EQ(lod("xlod_300"), "<none>") << "the prefix must begin the name";
}

TEST(ElementTail, ObjectMaskAndClipDistanceShowWhenSetAwayFromTheirDefaults)
{
    ExportHarness h;
    std::string body;
    const std::pair<const char*, const char*> masks[] = {{"mask255", "255"}, {"mask254", "254"}, {"maskNegative", "-3"}};
    for (const auto& m : masks)
        body += std::string("createNode transform -n \"") + m.first + "\";\n" +
                floatAttribute("vQM_objectMask", "long") + "\tsetAttr \".vQM_objectMask\" " + m.second + ";\n";
    body += "createNode transform -n \"clipped\";\n" + floatAttribute("vQM_clipDistance") +
            "\tsetAttr \".vQM_clipDistance\" 250.5;\n"
            "createNode transform -n \"clipZero\";\n" +
            floatAttribute("vQM_clipDistance") +
            "createNode transform -n \"textMask\";\n"
            "\taddAttr -ci true -sn \"vQM_objectMask\" -ln \"vQM_objectMask\" -dt \"string\";\n"
            "\tsetAttr \".vQM_objectMask\" -type \"string\" \"12\";\n"
            "createNode transform -n \"plain\";\n";
    ASSERT_TRUE(h.loadScene(maScene(body)));
    std::string scene = sceneOf(h.run(""));
    EXPECT_EQ(attributeOf(elementLine(scene, "mask255"), "objectMask"), "<none>");
    EXPECT_EQ(attributeOf(elementLine(scene, "mask254"), "objectMask"), "254");
    EXPECT_EQ(attributeOf(elementLine(scene, "maskNegative"), "objectMask"), "-3");
    EXPECT_EQ(attributeOf(elementLine(scene, "textMask"), "objectMask"), "<none>") << "a string is no mask";
    EXPECT_EQ(elementLine(scene, "clipped"), "    <TransformGroup name=\"clipped\" clipDistance=\"250.5\" nodeId=\"4\"/>");
    EXPECT_EQ(attributeOf(elementLine(scene, "clipZero"), "clipDistance"), "<none>");
    EXPECT_EQ(elementLine(scene, "plain"), "    <TransformGroup name=\"plain\" nodeId=\"7\"/>");
}

}  // namespace
