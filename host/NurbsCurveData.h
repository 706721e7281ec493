// What a NURBS curve node holds: degree, spans, form, knots and control points (centimetres),
// read from its "nurbsCurve" data in a scene file.
#pragma once

#include "Graph.h"

#include <vector>

namespace vqmhost {

struct NurbsCurveGeometry : Data {
    MFn::Type apiType() const override { return MFn::kNurbsCurveData; }

    int degree = 0;
    int spans = 0;
    int form = 0;  // 0 open, 1 closed, 2 periodic
    bool rational = false;
    int dimension = 3;
    std::vector<double> knots;
    std::vector<double> cvs;      // x y z per control point
    std::vector<double> weights;  // one per control point when rational
    int numCVs() const { return int(cvs.size() / 3); }
};

// The curve data a node holds itself; null when it has none.
const NurbsCurveGeometry* curveGeometry(const Node& curve);

// The hook through which a scene file fills a curve: 1 read, 0 not curve data, -1 refused.
int readCurveFileValues(Node& node, const PlugPath& path, const FileValues& values);

// Values of the curve's attributes that follow from its data (form, degree, spans).
bool computeCurveValue(const Node& node, const PlugPath& path, Value& value);

}  // namespace vqmhost
