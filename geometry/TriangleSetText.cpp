#include "geometry/TriangleSetText.h"

#include "geometry/Matrix.h"
#include "geometry/NumberFormat.h"
#include "geometry/TriangleSet.h"

namespace vqm
{

namespace
{

// Text goes out in pieces of about this size, so that a large set never sits in memory twice.
const size_t kFlushSize = 1 << 20;

class TextBuffer
{
public:
	explicit TextBuffer(std::ostream& out) : m_out(out) { m_text.reserve(kFlushSize + 4096); }
	~TextBuffer() { flush(); }

	std::string& text() { return m_text; }
	void flushIfFull()
	{
		if (m_text.size() >= kFlushSize)
			flush();
	}
	void flush()
	{
		m_out.write(m_text.data(), std::streamsize(m_text.size()));
		m_text.clear();
	}

private:
	std::ostream& m_out;
	std::string m_text;
};

void appendAttribute(std::string& text, const char* name, const float* values, size_t count)
{
	text += ' ';
	text += name;
	text += "=\"";
	appendNumbers(text, values, count);
	text += '"';
}

void appendAttribute(std::string& text, const char* name, uint64_t value)
{
	text += ' ';
	text += name;
	text += "=\"";
	appendUnsigned(text, value);
	text += '"';
}

void writeOpening(std::string& text, const IndexedTriangleSet& set, const std::string& name, uint32_t shapeId)
{
	text += "    <IndexedTriangleSet name=\"";
	text += name;
	text += '"';
	appendAttribute(text, "shapeId", shapeId);
	appendAttribute(text, "meshUsage", set.meshUsage());
}

void writeVertices(TextBuffer& buffer, const IndexedTriangleSet& set)
{
	std::string& text = buffer.text();
	const uint32_t flags = set.vertexFlags();
	const bool blend = (flags & HasBlendWeights) != 0;
	const bool single = (flags & SingleBlendWeights) != 0;
	const uint32_t n = set.numVertices();

	text += "      <Vertices";
	appendAttribute(text, "count", n);
	static const char* const uvNames[4] = {"uv0", "uv1", "uv2", "uv3"};
	if (flags & HasNormal)
		text += " normal=\"true\"";
	for (uint32_t s = 0; s < 4; ++s)
		if (flags & uvFlag(s))
		{
			text += ' ';
			text += uvNames[s];
			text += "=\"true\"";
		}
	if (flags & HasColor)
		text += " color=\"true\"";
	if (blend && single)
		text += " singleblendweights=\"true\"";
	if (blend && !single)
		text += " blendweights=\"true\"";
	if (flags & HasTangent)
		text += " tangent=\"true\"";
	if (flags & HasGeneric)
		text += " generic=\"true\"";
	text += ">\n";

	static const char* const uvAttributes[4] = {"t0", "t1", "t2", "t3"};
	const uint32_t blends = set.blendsPerVertex();
	for (uint32_t v = 0; v < n; ++v)
	{
		text += "        <v";
		appendAttribute(text, "p", set.positions() + 3 * size_t(v), 3);
		if (flags & HasNormal)
			appendAttribute(text, "n", set.normals() + 3 * size_t(v), 3);
		for (uint32_t s = 0; s < 4; ++s)
			if (flags & uvFlag(s))
				appendAttribute(text, uvAttributes[s], set.uvs(s) + 2 * size_t(v), 2);
		if (flags & HasColor)
			appendAttribute(text, "c", set.colors() + 4 * size_t(v), 4);
		if (blend && !single)
			appendAttribute(text, "bw", set.blendWeights() + 4 * size_t(v), 4);
		if (blend)
		{
			text += " bi=\"";
			const uint8_t* indices = set.blendIndices() + blends * size_t(v);
			for (uint32_t j = 0; j < blends; ++j)
			{
				if (j > 0)
					text += ' ';
				appendUnsigned(text, indices[j]);
			}
			text += '"';
		}
		if (flags & HasGeneric)
			appendAttribute(text, "g", set.generics() + v, 1);
		text += "/>\n";
		buffer.flushIfFull();
	}
	text += "      </Vertices>\n";
}

void writeTriangles(TextBuffer& buffer, const IndexedTriangleSet& set)
{
	std::string& text = buffer.text();
	const uint32_t numTriangles = set.numIndices() / 3;
	text += "      <Triangles";
	appendAttribute(text, "count", numTriangles);
	text += ">\n";
	char line[3 * kMaxNumberText + 32];
	for (uint32_t t = 0; t < numTriangles; ++t)
	{
		char* end = line;
		auto put = [&end](const char* s, size_t length) {
			for (size_t i = 0; i < length; ++i)
				*end++ = s[i];
		};
		put("        <t vi=\"", 15);
		end = formatUnsigned(end, set.indexAt(3 * t));
		*end++ = ' ';
		end = formatUnsigned(end, set.indexAt(3 * t + 1));
		*end++ = ' ';
		end = formatUnsigned(end, set.indexAt(3 * t + 2));
		put("\"/>\n", 4);
		text.append(line, end);
		buffer.flushIfFull();
	}
	text += "      </Triangles>\n";
}

void writeSubsets(std::string& text, const IndexedTriangleSet& set)
{
	text += "      <Subsets";
	appendAttribute(text, "count", set.numSubsets());
	text += ">\n";
	for (uint32_t i = 0; i < set.numSubsets(); ++i)
	{
		const Subset* subset = set.getSubset(i);
		const Subset empty;
		if (!subset)
			subset = &empty;
		text += "        <Subset";
		appendAttribute(text, "firstVertex", subset->firstVertex);
		appendAttribute(text, "numVertices", subset->numVertices);
		appendAttribute(text, "firstIndex", subset->firstIndex);
		appendAttribute(text, "numIndices", subset->numIndices);
		text += "/>\n";
	}
	text += "      </Subsets>\n";
}

bool anyNot(const float values[3], float value)
{
	return values[0] != value || values[1] != value || values[2] != value;
}

void writeAttachments(std::string& text, const AttachmentFace* faces, const AttachmentPlacement* placements,
                      uint32_t numAttachments)
{
	text += "      <Attachments";
	appendAttribute(text, "count", numAttachments);
	text += ">\n";
	for (uint32_t i = 0; i < numAttachments; ++i)
	{
		const AttachmentPlacement& placement = placements[i];
		text += "        <Attachment";
		appendAttribute(text, "faceIndex", faces[i].faceIndex);
		appendAttribute(text, "bvCenter", placement.bvCenter, 3);
		appendAttribute(text, "bvRadius", &placement.bvRadius, 1);
		const float* translation = placement.matrix + 12;
		if (anyNot(translation, 0.0f))
			appendAttribute(text, "translation", translation, 3);
		float scale[3], rotation[3];
		extractScale(placement.matrix, scale);
		extractRotation(placement.matrix, rotation, scale);
		if (anyNot(rotation, 0.0f))
		{
			float degrees[3];
			for (int k = 0; k < 3; ++k)
				degrees[k] = (rotation[k] * 180.0f) * 0.31830987f;
			appendAttribute(text, "rotation", degrees, 3);
		}
		if (anyNot(scale, 1.0f))
			appendAttribute(text, "scale", scale, 3);
		text += "/>\n";
	}
	text += "      </Attachments>\n";
}

} // namespace

void writeTriangleSetText(const IndexedTriangleSet& set, const std::string& name, uint32_t shapeId,
                          const float bvCenter[3], float bvRadius, std::ostream& out)
{
	TextBuffer buffer(out);
	std::string& text = buffer.text();
	writeOpening(text, set, name, shapeId);
	if (bvRadius != 0.0f)
	{
		appendAttribute(text, "bvCenter", bvCenter, 3);
		appendAttribute(text, "bvRadius", &bvRadius, 1);
	}
	if (set.isOptimized())
		text += " isOptimized=\"true\"";
	text += ">\n";
	writeVertices(buffer, set);
	writeTriangles(buffer, set);
	writeSubsets(text, set);
	text += "    </IndexedTriangleSet>\n";
}

void writeAttachmentShapeText(const IndexedTriangleSet& set, const std::string& name, uint32_t shapeId,
                              const AttachmentFace* faces, const AttachmentPlacement* placements,
                              uint32_t numAttachments, std::ostream& out)
{
	TextBuffer buffer(out);
	std::string& text = buffer.text();
	writeOpening(text, set, name, shapeId);
	if (set.isOptimized())
		text += " isOptimized=\"true\"";
	text += " isAttachment=\"true\">\n";
	writeVertices(buffer, set);
	writeTriangles(buffer, set);
	writeSubsets(text, set);
	writeAttachments(text, faces, placements, numAttachments);
	text += "    </IndexedTriangleSet>\n";
}

} // namespace vqm
