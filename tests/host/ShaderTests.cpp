// Shader function sets, the node iterator, attribute kinds, colour models.
#include <maya/MColor.h>
#include <maya/MFnAttribute.h>
#include <maya/MFnLambertShader.h>
#include <maya/MItDependencyNodes.h>
#include <maya/MSelectionList.h>

#include "Session.h"
#include "mayaascii/MayaAsciiReader.h"

#include <gtest/gtest.h>

namespace {

MObject find(const char* name)
{
    MSelectionList list;
    MObject object;
    if (list.add(MString(name))) list.getDependNode(0, object);
    return object;
}

const char* const kShaders =
    "createNode lambert -n \"plain\";\n"
    "\tsetAttr \".it\" -type \"float3\" 0.2 0.6 0.4 ;\n"
    "createNode blinn -n \"shiny\";\n"
    "\tsetAttr \".ec\" 0.25;\n"
    "\taddAttr -ci true -sn \"customShader\" -ln \"customShader\" -dt \"string\";\n"
    "\taddAttr -ci true -sn \"customParameter_gloss\" -ln \"customParameter_gloss\" -at \"float\";\n"
    "\taddAttr -ci true -sn \"customParameter_tint\" -ln \"customParameter_tint\" -at \"float3\" -nc 3;\n"
    "\taddAttr -ci true -sn \"customParameter_tintR\" -ln \"customParameter_tintR\" -at \"float\" -p \"customParameter_tint\";\n"
    "\taddAttr -ci true -sn \"customParameter_tintG\" -ln \"customParameter_tintG\" -at \"float\" -p \"customParameter_tint\";\n"
    "\taddAttr -ci true -sn \"customParameter_tintB\" -ln \"customParameter_tintB\" -at \"float\" -p \"customParameter_tint\";\n"
    "\tsetAttr \".customShader\" -type \"string\" \"shaders/car.fx\";\n"
    "createNode phong -n \"plastic\";\n"
    "createNode surfaceShader -n \"flat\";\n"
    "createNode file -n \"wood\";\n"
    "\tsetAttr \".ftn\" -type \"string\" \"sourceimages/wood.png\";\n"
    "connectAttr \"wood.oc\" \"plastic.c\";\n";

TEST(Shaders, ValuesDefaultsAndFamilies)
{
    std::string error;
    ASSERT_TRUE(vqmhost::readMayaAsciiText(kShaders, "/s/shaders.ma", error)) << error;
    MFnLambertShader plain(find("plain"));
    MColor transparency = plain.transparency();
    EXPECT_FLOAT_EQ(transparency.g, 0.6f);
    float h, s, v;
    transparency.get(MColor::kHSV, h, s, v);
    EXPECT_FLOAT_EQ(v, 0.6f) << "the value of HSV is the largest channel";
    EXPECT_FLOAT_EQ(plain.color().r, 0.5f);
    EXPECT_FLOAT_EQ(plain.diffuseCoeff(), 0.8f);
    EXPECT_FLOAT_EQ(plain.refractiveIndex(), 1.0f);
    EXPECT_FLOAT_EQ(plain.glowIntensity(), 0.0f);

    MFnBlinnShader shiny(find("shiny"));
    EXPECT_FLOAT_EQ(shiny.eccentricity(), 0.25f);
    EXPECT_FLOAT_EQ(shiny.specularRollOff(), 0.7f);
    EXPECT_FLOAT_EQ(shiny.specularColor().b, 0.5f);
    EXPECT_FLOAT_EQ(MFnPhongShader(find("plastic")).cosPower(), 20.0f);
    // A colour driven by a texture reads the texture's output, not its own value.
    EXPECT_FLOAT_EQ(MFnPhongShader(find("plastic")).color().r, 0.0f);

    MStatus status;
    MFnPhongShader wrong(find("shiny"), &status);
    EXPECT_FALSE(status) << "a blinn is no phong";
    EXPECT_EQ(find("shiny").apiType(), MFn::kBlinn);
    EXPECT_STREQ(find("flat").apiTypeStr(), "kSurfaceShader");

    std::vector<std::string> lamberts;
    for (MItDependencyNodes it(MFn::kLambert); !it.isDone(); it.next())
        lamberts.push_back(MFnDependencyNode(it.item()).name().asChar());
    EXPECT_EQ(lamberts, (std::vector<std::string>{"lambert1", "plain", "shiny", "plastic"}));
}

TEST(Shaders, DynamicAttributesTellTheirKind)
{
    std::string error;
    ASSERT_TRUE(vqmhost::readMayaAsciiText(kShaders, "/s/shaders.ma", error)) << error;
    MFnDependencyNode shiny(find("shiny"));
    std::vector<std::string> dynamic;
    for (unsigned i = 0; i < shiny.attributeCount(); ++i) {
        MObject attribute = shiny.attribute(i);
        if (shiny.attributeClass(attribute) != MFnDependencyNode::kLocalDynamicAttr) continue;
        dynamic.push_back(MFnAttribute(attribute).name().asChar());
    }
    EXPECT_EQ(dynamic, (std::vector<std::string>{"customShader", "customParameter_gloss", "customParameter_tint",
                                                 "customParameter_tintR", "customParameter_tintG",
                                                 "customParameter_tintB"}));
    MObject shader = shiny.attribute("customShader");
    ASSERT_TRUE(shader.hasFn(MFn::kTypedAttribute));
    EXPECT_EQ(MFnTypedAttribute(shader).attrType(), MFnData::kString);
    MObject gloss = shiny.attribute("customParameter_gloss");
    ASSERT_TRUE(gloss.hasFn(MFn::kNumericAttribute));
    EXPECT_EQ(MFnNumericAttribute(gloss).unitType(), MFnNumericData::kFloat);
    EXPECT_EQ(MFnNumericAttribute(shiny.attribute("customParameter_tint")).unitType(), MFnNumericData::k3Float);
    EXPECT_FALSE(shiny.attribute("translateX").hasFn(MFn::kAttribute)) << "a shader has no translate";
}

TEST(Colors, HsvRoundTrips)
{
    MColor c(0.9f, 0.3f, 0.1f);
    float h, s, v;
    ASSERT_TRUE(c.get(MColor::kHSV, h, s, v));
    EXPECT_NEAR(h, 15.0f, 1e-4);
    EXPECT_NEAR(s, 0.8f / 0.9f, 1e-6);
    EXPECT_FLOAT_EQ(v, 0.9f);
    MColor back;
    back.set(MColor::kHSV, h, s, v);
    EXPECT_NEAR(back.r, 0.9f, 1e-6);
    EXPECT_NEAR(back.g, 0.3f, 1e-6);
    EXPECT_NEAR(back.b, 0.1f, 1e-6);
    MColor grey(0.4f, 0.4f, 0.4f);
    grey.get(MColor::kHSV, h, s, v);
    EXPECT_EQ(h, 0.0f);
    EXPECT_EQ(s, 0.0f);
}

}  // namespace
