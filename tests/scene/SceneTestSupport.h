// Small Maya ASCII scenes for the Scene stage, and reading back what it wrote.
#pragma once

#include "common/ExportHarness.h"

#include "plugin/RunState.h"
#include "scene/SceneExporter.h"

#include <cstdlib>
#include <sstream>
#include <string>
#include <vector>

namespace scenetest {

inline std::string maScene(const std::string& body, const char* linearUnit = "centimeter")
{
    return std::string("//Maya ASCII 2016 scene\nrequires maya \"2016\";\ncurrentUnit -l ") + linearUnit +
           " -a degree -t film;\n" + body;
}

// The Scene section of a run's document, both tags included.
inline std::string sceneOf(const vqmtest::ExportRun& run)
{
    return vqmtest::section(run.document, "  <Scene>", "  </Scene>");
}

// The line of the element with that name attribute; empty when there is none.
inline std::string elementLine(const std::string& scene, const std::string& name, int occurrence = 0)
{
    std::string key = " name=\"" + name + "\"";
    size_t at = 0;
    for (int i = 0; i <= occurrence; ++i) {
        at = scene.find(key, i == 0 ? 0 : at + 1);
        if (at == std::string::npos) return std::string();
    }
    size_t begin = scene.rfind('\n', at);
    begin = begin == std::string::npos ? 0 : begin + 1;
    return scene.substr(begin, scene.find('\n', at) - begin);
}

// The value of an attribute in an element line; "<none>" when the line does not have it.
inline std::string attributeOf(const std::string& line, const std::string& attribute)
{
    std::string key = " " + attribute + "=\"";
    size_t at = line.find(key);
    if (at == std::string::npos) return "<none>";
    at += key.size();
    return line.substr(at, line.find('"', at) - at);
}

inline std::vector<double> numbersOf(const std::string& text)
{
    std::vector<double> out;
    std::istringstream in(text);
    for (double v; in >> v;) out.push_back(v);
    return out;
}

inline int count(const std::string& text, const std::string& part)
{
    int n = 0;
    for (size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) ++n;
    return n;
}

// The Scene stage on its own, on the current scene, with the containers it filled.
struct StageRun {
    vqm::FileMap files;
    vqm::ShapeMap shapes;
    vqm::MaterialMap materials;
    vqm::DynamicMap dynamics;
    vqm::NodeMap nodes;
    vqm::MergeGroupList mergeGroups;
    vqm::AttachmentList attachments;
    vqm::BoundingVolumeSourceMap boundingVolumes;
    std::string text;
    bool ok = false;
};

inline std::unique_ptr<StageRun> runStage(bool shapes, bool ignoreBindPoses)
{
    auto run = std::make_unique<StageRun>();
    vqm::SceneExporter exporter(false, false, false, false, shapes, false, false, false, false, false, ignoreBindPoses,
                                false);
    std::ostringstream text;
    run->ok = bool(exporter.exportScene(run->files, run->shapes, run->materials, run->dynamics, run->nodes,
                                        run->mergeGroups, run->attachments, run->boundingVolumes, text));
    run->text = text.str();
    return run;
}

}  // namespace scenetest

#define EXPECT_ANGLES_NEAR(text, a, b, c)                      \
    do {                                                        \
        std::vector<double> v_ = scenetest::numbersOf(text);   \
        ASSERT_EQ(v_.size(), 3u) << (text);                     \
        EXPECT_NEAR(v_[0], (a), 1e-3) << (text);                \
        EXPECT_NEAR(v_[1], (b), 1e-3) << (text);                \
        EXPECT_NEAR(v_[2], (c), 1e-3) << (text);                \
    } while (0)
