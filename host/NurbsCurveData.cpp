// Reading the "nurbsCurve" data of a scene file: "degree spans form rational dimension",
// the knot count and knots, the control point count and the points (x y [z] [w]).
#include "NurbsCurveData.h"
#include "mayaascii/MayaAsciiNumber.h"

#include <memory>
#include <string_view>

namespace vqmhost {

const NurbsCurveGeometry* curveGeometry(const Node& curve)
{
    return dynamic_cast<const NurbsCurveGeometry*>(curve.internal.get());
}

int readCurveFileValues(Node& node, const PlugPath& path, const FileValues& values)
{
    const std::string& name = path[0].attribute->shortName;
    if (name != "cc" && name != "cr") return 0;
    const auto& words = *values.words;
    size_t i = 0;
    auto next = [&](double& value) {
        if (i >= words.size() || !parseMayaAsciiNumber(words[i], value)) return false;
        ++i;
        return true;
    };
    auto curve = std::make_shared<NurbsCurveGeometry>();
    double degree, spans, form, rational, dimension, knotCount, cvCount;
    if (!next(degree) || !next(spans) || !next(form) || !next(rational) || !next(dimension)) {
        *values.error = "the curve header needs degree, spans, form, rational flag and dimension";
        return -1;
    }
    if (degree < 1 || spans < 0 || form < 0 || form > 2 || (dimension != 2 && dimension != 3)) {
        *values.error = "the curve header is out of range";
        return -1;
    }
    curve->degree = int(degree);
    curve->spans = int(spans);
    curve->form = int(form);
    curve->rational = rational != 0.0;
    curve->dimension = int(dimension);
    if (!next(knotCount) || knotCount < 0 || size_t(knotCount) > words.size()) {
        *values.error = "the knot count is missing";
        return -1;
    }
    curve->knots.resize(size_t(knotCount));
    for (double& knot : curve->knots)
        if (!next(knot)) {
            *values.error = "the knots are cut short";
            return -1;
        }
    const size_t width = size_t(curve->dimension) + (curve->rational ? 1 : 0);
    if (!next(cvCount) || cvCount < 0 || size_t(cvCount) * width > words.size()) {
        *values.error = "the control point count is missing or too large";
        return -1;
    }
    for (size_t c = 0; c < size_t(cvCount); ++c) {
        double p[4] = {0.0, 0.0, 0.0, 1.0};
        for (size_t k = 0; k < width; ++k)
            if (!next(p[k < size_t(curve->dimension) ? k : 3])) {
                *values.error = "the control points are cut short";
                return -1;
            }
        for (int k = 0; k < 3; ++k) curve->cvs.push_back(p[k] * values.linearScale);
        if (curve->rational) curve->weights.push_back(p[3]);
    }
    if (i != words.size()) *values.error = "values after the control points are ignored";
    node.internal = curve;
    node.scene.touch();
    return 1;
}

bool computeCurveValue(const Node& node, const PlugPath& path, Value& value)
{
    const NurbsCurveGeometry* curve = curveGeometry(node);
    if (!curve || path.size() != 1) return false;
    const std::string& name = path[0].attribute->shortName;
    double number;
    if (name == "f") number = curve->form;
    else if (name == "d") number = curve->degree;
    else if (name == "s") number = curve->spans;
    else return false;
    value.kind = Value::Number;
    value.number = number;
    return true;
}

}  // namespace vqmhost
