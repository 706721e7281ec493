// The Materials and Files sections through the real command, on small scenes.
#include "common/ExportHarness.h"

#include "materials/MaterialsExporter.h"

using vqmtest::ExportHarness;
using vqmtest::ExportRun;
using vqmtest::section;

namespace {

std::string materials(const ExportRun& r) { return section(r.document, "  <Materials>", "  </Materials>"); }
std::string files(const ExportRun& r) { return section(r.document, "  <Files>", "  </Files>"); }

// Every scene has lambert1, the default shader, and without -shap it is exported first.
const char* const kLambert1 =
    "    <Material name=\"lambert1\" materialId=\"1\" diffuseColor=\"0.5 0.5 0.5 1\" specularColor=\"0 0 0\" "
    "ambientColor=\"1 1 1\">\n    </Material>\n";

struct Workspace {
    Workspace(const std::string& root, const std::string& rule = "sourceimages")
    {
        vqmhost::setWorkspaceRoot(root);
        vqmhost::setWorkspaceFileRule("sourceImages", rule);
    }
    ~Workspace()
    {
        vqmhost::clearWorkspace();
        vqmhost::setWorkspaceFileRule("sourceImages", "sourceimages");
    }
};

const char* const kShaders =
    "createNode lambert -n \"glow\";\n"
    "\tsetAttr \".gi\" 1;\n"
    "\tsetAttr \".c\" -type \"float3\" 1 0.5 0 ;\n"
    "createNode lambert -n \"almostGlow\";\n"
    "\tsetAttr \".gi\" 0.99;\n"
    "\tsetAttr \".ambc\" -type \"float3\" 0.1 0.2 0.3 ;\n"
    "\tsetAttr \".it\" -type \"float3\" 0.25 0.5 0.1 ;\n"
    "\tsetAttr \".tc\" 0.2;\n"
    "createNode lambert -n \"glass\";\n"
    "\tsetAttr \".rfi\" 1.5;\n"
    "\tsetAttr \".rfn\" yes;\n"
    "\tsetAttr \".la\" 0.25;\n"
    "\taddAttr -ci true -sn \"reflectionMapResolution\" -ln \"reflectionMapResolution\" -at \"long\";\n"
    "\taddAttr -ci true -sn \"reflectionMapBumpScale\" -ln \"reflectionMapBumpScale\" -dt \"string\";\n"
    "\tsetAttr \".reflectionMapResolution\" 256;\n"
    "\tsetAttr \".reflectionMapBumpScale\" -type \"string\" \" 2.5e-1xyz\";\n"
    "createNode blinn -n \"paint\";\n"
    "\tsetAttr \".ec\" 0.5;\n"
    "\tsetAttr \".sro\" 0.5;\n"
    "createNode surfaceShader -n \"flat\";\n"
    "createNode anisotropic -n \"brushed\";\n";

TEST(Materials, ColoursEmissionReflectionAndRefraction)
{
    ExportHarness h;
    ASSERT_TRUE(h.loadScene(kShaders));
    ExportRun r = h.run("");
    ASSERT_TRUE(r.ok);
    EXPECT_EQ(materials(r),
              "  <Materials>\n" + std::string(kLambert1) +
              "    <Material name=\"glow\" materialId=\"2\" emissiveColor=\"1 0.5 0 1\" specularColor=\"0 0 0\" ambientColor=\"1 1 1\">\n"
              "    </Material>\n"
              "    <Material name=\"almostGlow\" materialId=\"3\" diffuseColor=\"0.5 0.5 0.5 0.5\" specularColor=\"0 0 0\" ambientColor=\"0.1 0.2 0.3\" alphaBlending=\"true\">\n"
              "    </Material>\n"
              "    <Material name=\"glass\" materialId=\"4\" diffuseColor=\"0.5 0.5 0.5 1\" specularColor=\"0 0 0\" ambientColor=\"1 1 1\">\n"
              "      <Reflectionmap type=\"planar\" refractiveIndex=\"1.5\" bumpScale=\"0.25\" resolution=\"256\"/>\n"
              "      <Refractionmap type=\"planar\" coeff=\"0.75\" bumpScale=\"0.1\"/>\n"
              "    </Material>\n"
              "    <Material name=\"paint\" materialId=\"5\" diffuseColor=\"0.5 0.5 0.5 1\" cosPower=\"23.5651\" specularColor=\"0.5 0.5 0.5\" ambientColor=\"1 1 1\">\n"
              "    </Material>\n"
              "  </Materials>\n");
    auto warnings = r.warnings();
    ASSERT_EQ(warnings.size(), 2u);
    EXPECT_EQ(warnings[0], "Blinn shader type is not directly supported, approximating to phong shader (only lambert and "
                           "phong supported): paint");
    EXPECT_EQ(warnings[1], "Unsupported shader type (only lambert and phong supported): brushed is of type kAnisotropy")
        << "a surface shader is no lambert at all and passes without a word";
    EXPECT_EQ(files(r), "  <Files>\n  </Files>\n") << "the section stands even without files";
    EXPECT_NE(r.document.find("\n\n  <Files>\n  </Files>\n\n  <Materials>"), std::string::npos);
}

const char* const kTextured =
    "createNode phong -n \"metal\";\n"
    "createNode lambert -n \"wood\";\n"
    "\tsetAttr \".rfi\" 1.2;\n"
    "createNode file -n \"woodFile\";\n"
    "\tsetAttr \".ftn\" -type \"string\" \"textures/Wood.png\";\n"
    "createNode file -n \"grainFile\";\n"
    "\tsetAttr \".ftn\" -type \"string\" \"D:\\\\Art\\\\grain.png\";\n"
    "createNode file -n \"chromeFile\";\n"
    "\tsetAttr \".ftn\" -type \"string\" \"/PROJ/Scenes/tex/chrome.png\";\n"
    "createNode file -n \"glossFile\";\n"
    "\tsetAttr \".ftn\" -type \"string\" \"/proj/out/gloss.png\";\n"
    "createNode bump2d -n \"bump\";\n"
    "\tsetAttr \".bd\" 0.5;\n"
    "createNode envCube -n \"cube\";\n"
    "createNode layeredTexture -n \"layers\";\n"
    "connectAttr \"woodFile.oc\" \"layers.cs[0].c\";\n"
    "connectAttr \"grainFile.oc\" \"layers.cs[1].c\";\n"
    "connectAttr \"layers.oc\" \"wood.c\";\n"
    "connectAttr \"grainFile.oa\" \"bump.bv\";\n"
    "connectAttr \"bump.o\" \"wood.n\";\n"
    "connectAttr \"woodFile.oc\" \"metal.c\";\n"
    "connectAttr \"chromeFile.oc\" \"cube.ri\";\n"
    "connectAttr \"cube.oc\" \"metal.rc\";\n"
    "connectAttr \"glossFile.oc\" \"metal.sc\";\n";

TEST(Materials, TexturesThroughLayersBumpsAndEnvironments)
{
    ExportHarness h;
    ASSERT_TRUE(h.loadScene(kTextured, "/proj/scenes/level.ma"));
    ExportRun r = h.run("");
    ASSERT_TRUE(r.ok);
    EXPECT_EQ(materials(r),
              "  <Materials>\n" + std::string(kLambert1) +
              "    <Material name=\"metal\" materialId=\"2\" cosPower=\"20\" specularColor=\"1 1 1\" ambientColor=\"1 1 1\">\n"
              "      <Texture fileId=\"1\"/>\n"
              "      <Glossmap fileId=\"2\"/>\n"
              "    </Material>\n"
              "    <Material name=\"wood\" materialId=\"3\" specularColor=\"0 0 0\" ambientColor=\"1 1 1\">\n"
              "      <Reflectionmap type=\"planar\" refractiveIndex=\"1.2\" bumpScale=\"0.1\"/>\n"
              "      <Texture fileId=\"1\"/>\n"
              "      <Texture fileId=\"3\"/>\n"
              "      <Normalmap fileId=\"3\" bumpDepth=\"0.5\"/>\n"
              "    </Material>\n"
              "  </Materials>\n")
        << "an environment cube needs its image input; its faces are no reflection map";
}

TEST(Materials, FilePathsBelowSourceImagesAndRelative)
{
    ExportHarness h;
    ASSERT_TRUE(h.loadScene(kTextured, "/proj/scenes/level.ma"));
    {
        ExportRun r = h.run("");
        EXPECT_EQ(files(r),
                  "  <Files>\n"
                  "    <File fileId=\"1\" filename=\"textures/Wood.png\" />\n"
                  "    <File fileId=\"3\" filename=\"D:/Art/grain.png\" />\n"
                  "    <File fileId=\"2\" filename=\"/proj/out/gloss.png\" />\n"
                  "  </Files>\n")
            << "no workspace: relative names stay relative; file nodes in their order, ids as given";
    }
    Workspace workspace("/proj", "sourceimages");
    ExportRun plain = h.run("");
    EXPECT_NE(plain.document.find("filename=\"/proj/sourceimages/textures/Wood.png\""), std::string::npos);
    EXPECT_NE(plain.document.find("filename=\"D:/Art/grain.png\""), std::string::npos) << "a drive keeps its path";

    // Relative to the scene below its directory, else to the output's directory.
    ASSERT_TRUE(h.loadScene(kTextured, "/proj/sourceimages/level.ma"));
    ExportRun relative = h.runCommand("VQMExporter -rp -f \"" + h.directory().path() + "/r.vqm\"");
    ASSERT_TRUE(relative.ok);
    std::string document = vqmtest::readWholeFile(h.directory().path() + "/r.vqm");
    EXPECT_NE(document.find("filename=\"textures/Wood.png\""), std::string::npos) << document;
    EXPECT_NE(document.find("filename=\"D:/Art/grain.png\""), std::string::npos) << "nothing in common: absolute";
}

TEST(Materials, RelativePathsIgnoreCaseAndStepOutOfTheOutputDirectory)
{
    vqm::MaterialsExporter exporter(true, false, false, "/Proj/Scenes/", "/proj/out/sub/");
    std::ostringstream out;
    exporter.writeFileElement("/PROJ/scenes/tex/chrome.png", 4, "", out);
    exporter.writeFileElement("/proj/textures/a.png", 5, "", out);
    exporter.writeFileElement("/other/b.png", 6, "", out);
    exporter.writeFileElement("c:\\Proj\\x.png", 7, "", out);
    EXPECT_EQ(out.str(),
              "    <File fileId=\"4\" filename=\"tex/chrome.png\" />\n"
              "    <File fileId=\"5\" filename=\"../../textures/a.png\" />\n"
              "    <File fileId=\"6\" filename=\"/other/b.png\" />\n"
              "    <File fileId=\"7\" filename=\"c:/Proj/x.png\" />\n");
    vqm::MaterialsExporter unsaved(true, false, false, "", "/out/");
    std::ostringstream second;
    unsaved.writeFileElement("fx/water.fx", 1, "/proj/sourceimages/", second);
    EXPECT_EQ(second.str(), "    <File fileId=\"1\" filename=\"/proj/sourceimages/fx/water.fx\" />\n");
}

const char* const kCustom =
    "createNode phong -n \"water\";\n"
    "\taddAttr -ci true -sn \"customShader\" -ln \"customShader\" -dt \"string\";\n"
    "\taddAttr -ci true -sn \"customShaderVariation\" -ln \"customShaderVariation\" -dt \"string\";\n"
    "\taddAttr -ci true -sn \"customParameter_speed\" -ln \"customParameter_speed\" -dt \"string\";\n"
    "\taddAttr -ci true -sn \"customParameter_depth\" -ln \"customParameter_depth\" -at \"double\";\n"
    "\taddAttr -ci true -sn \"customTexture_foam\" -ln \"customTexture_foam\" -dt \"string\";\n"
    "\tsetAttr \".customShader\" -type \"string\" \"fx/water.fx\";\n"
    "\tsetAttr \".customShaderVariation\" -type \"string\" \"calm\";\n"
    "\tsetAttr \".customParameter_speed\" -type \"string\" \"0.5 0.25\";\n"
    "\tsetAttr \".customParameter_depth\" 3;\n"
    "\tsetAttr \".customTexture_foam\" -type \"string\" \"tex/foam.png\";\n"
    "createNode lambert -n \"lake\";\n"
    "\taddAttr -ci true -sn \"customShader\" -ln \"customShader\" -dt \"string\";\n"
    "\taddAttr -ci true -sn \"customTexture_foam\" -ln \"customTexture_foam\" -dt \"string\";\n"
    "\tsetAttr \".customShader\" -type \"string\" \"fx/water.fx\";\n"
    "\tsetAttr \".customTexture_foam\" -type \"string\" \"tex/foam.png\";\n"
    "createNode lambert -n \"plain\";\n"
    "\taddAttr -ci true -sn \"customParameter_speed\" -ln \"customParameter_speed\" -dt \"string\";\n"
    "\tsetAttr \".customParameter_speed\" -type \"string\" \"1\";\n";

TEST(Materials, CustomShadersShareTheirFiles)
{
    ExportHarness h;
    ASSERT_TRUE(h.loadScene(kCustom, "/proj/scenes/level.ma"));
    ExportRun r = h.run("");
    ASSERT_TRUE(r.ok);
    EXPECT_EQ(materials(r),
              "  <Materials>\n" + std::string(kLambert1) +
              "    <Material name=\"water\" materialId=\"2\" diffuseColor=\"0.5 0.5 0.5 1\" cosPower=\"20\" specularColor=\"0.5 0.5 0.5\" ambientColor=\"1 1 1\" customShaderId=\"1\" customShaderVariation=\"calm\">\n"
              "      <CustomParameter name=\"speed\" value=\"0.5 0.25\"/>\n"
              "      <Custommap name=\"foam\" fileId=\"2\"/>\n"
              "    </Material>\n"
              "    <Material name=\"lake\" materialId=\"3\" diffuseColor=\"0.5 0.5 0.5 1\" specularColor=\"0 0 0\" ambientColor=\"1 1 1\" customShaderId=\"1\">\n"
              "      <Custommap name=\"foam\" fileId=\"2\"/>\n"
              "    </Material>\n"
              "    <Material name=\"plain\" materialId=\"4\" diffuseColor=\"0.5 0.5 0.5 1\" specularColor=\"0 0 0\" ambientColor=\"1 1 1\">\n"
              "    </Material>\n"
              "  </Materials>\n")
        << "numeric custom parameters and parameters without a custom shader write nothing";
    EXPECT_EQ(files(r),
              "  <Files>\n"
              "    <File fileId=\"1\" filename=\"/proj/scenes/fx/water.fx\" />\n"
              "    <File fileId=\"2\" filename=\"/proj/scenes/tex/foam.png\" />\n"
              "  </Files>\n")
        << "custom paths in path order, behind the scene's directory";
}

TEST(Materials, ShapesExportShowsOnlyWhatShapesUse)
{
    ExportHarness h;
    ASSERT_TRUE(h.loadScene(kTextured));
    ExportRun r = h.run("-shap");
    ASSERT_TRUE(r.ok);
    EXPECT_EQ(materials(r), "  <Materials>\n  </Materials>\n");
    EXPECT_EQ(files(r), "  <Files>\n  </Files>\n") << "textures of unused shaders are not listed";
}

TEST(Materials, ParseFloatReadsWhatItCan)
{
    EXPECT_FLOAT_EQ(vqm::parseFloat("  -12.5e1junk"), -125.0f);
    EXPECT_FLOAT_EQ(vqm::parseFloat("3e+2"), 300.0f);
    EXPECT_FLOAT_EQ(vqm::parseFloat("1e-10"), 1e-10f);
    EXPECT_EQ(vqm::parseFloat("abc"), 0.0f);
    EXPECT_EQ(vqm::parseFloat(""), 0.0f);
    EXPECT_FLOAT_EQ(vqm::parseFloat(".5"), 0.5f);
}

// A real scene with a Blinn, two file textures and a bump node, checked by hand.
TEST(Materials, RealSceneWithTextures)
{
    ExportHarness h;
    std::string error;
    if (!vqmhost::readMayaAsciiFile(std::string(VQM_SHARED_SCENES_DIR) + "/CupTexturedBump_m2018.ma", error))
        GTEST_SKIP() << "no shared scenes";
    ExportRun r = h.run("");
    ASSERT_TRUE(r.ok);
    const std::string root = "C:/Users/Corey/Documents/OrganizedDocs/maya/projects/babyYoda_project//textures/";
    EXPECT_EQ(files(r), "  <Files>\n    <File fileId=\"1\" filename=\"" + root + "cup_diff.png\" />\n    <File fileId=\"2\" filename=\"" +
                            root + "cup_norm.png\" />\n  </Files>\n");
    EXPECT_NE(materials(r).find("    <Material name=\"cupMat\" materialId=\"2\" cosPower=\"32.6537\" specularColor=\"0.5 0.5 0.5\" "
                                "ambientColor=\"1 1 1\">\n      <Texture fileId=\"1\"/>\n      <Normalmap fileId=\"2\"/>\n"),
              std::string::npos)
        << materials(r);
}

}  // namespace
