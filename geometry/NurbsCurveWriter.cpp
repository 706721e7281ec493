#include "geometry/NurbsCurveWriter.h"

#include "geometry/NumberFormat.h"
#include "geometry/ShapeBlocks.h"

#include <cstring>

namespace vqm
{

void writeNurbsCurveText(const std::string& name, uint32_t shapeId, int degree, int form, const double* points,
                         uint32_t count, double unitScale, std::ostream& out)
{
	std::string text = "    <NurbsCurve name=\"" + name + "\" shapeId=\"";
	appendUnsigned(text, shapeId);
	text += "\" degree=\"";
	appendSigned(text, degree);
	text += form == 0 ? "\" form=\"open\">\n" : "\" form=\"closed\">\n";
	for (uint32_t i = 0; i < count; ++i)
	{
		text += "          <cv c=\"";
		for (int k = 0; k < 3; ++k)
		{
			if (k > 0)
				text += ' ';
			appendNumber(text, double(float(points[3 * size_t(i) + size_t(k)])) * unitScale);
		}
		text += "\"/>\n";
	}
	text += "    </NurbsCurve>\n";
	out << text;
}

ShapeBlob makeNurbsCurveBlob(const std::string& name, uint32_t shapeId, bool closed, const double* points,
                             uint32_t count, double unitScale)
{
	ShapeBlob blob;
	blob.type = ShapeBlobNurbsCurve;
	blob.size = nameFieldSize(name) + 12 + 12 * count;
	blob.data.reset(new uint8_t[blob.size]());
	uint8_t* p = writeNameField(name, blob.data.get());
	const uint32_t header[3] = {shapeId, closed ? 1u : 0u, count};
	memcpy(p, header, sizeof header);
	p += sizeof header;
	for (uint32_t i = 0; i < 3 * count; ++i)
	{
		const float value = float(points[i] * unitScale);
		memcpy(p, &value, 4);
		p += 4;
	}
	return blob;
}

} // namespace vqm
