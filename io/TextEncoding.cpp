#include "io/TextEncoding.h"

namespace vqm
{

size_t utf16Length(const std::string& text)
{
	size_t units = 0;
	size_t i = 0;
	size_t size = text.size();

	while (i < size)
	{
		unsigned char lead = static_cast<unsigned char>(text[i]);

		size_t trail = 0;
		if (lead >= 0xc2 && lead <= 0xdf)
			trail = 1;
		else if (lead >= 0xe0 && lead <= 0xef)
			trail = 2;
		else if (lead >= 0xf0 && lead <= 0xf4)
			trail = 3;

		bool valid = lead < 0x80 || trail > 0;
		for (size_t k = 1; valid && k <= trail; ++k)
			valid = i + k < size && (static_cast<unsigned char>(text[i + k]) & 0xc0) == 0x80;

		if (valid && trail > 0)
		{
			// four-byte sequences are outside the basic plane and need a surrogate pair
			units += trail == 3 ? 2 : 1;
			i += trail + 1;
		}
		else
		{
			units += 1;
			i += 1;
		}
	}

	return units;
}

bool fitsPathBuffer(const std::string& text, size_t bufferUnits)
{
	return utf16Length(text) + 1 <= bufferUnits;
}

} // namespace vqm
