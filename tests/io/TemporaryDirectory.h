// A fresh directory under /tmp for one test, removed with everything in it at the end.
#pragma once

#include <ftw.h>
#include <stdio.h>
#include <stdlib.h>

#include <string>

namespace vqm
{

class TemporaryDirectory
{
public:
	TemporaryDirectory()
	{
		char pattern[] = "/tmp/vqm-io-XXXXXX";
		if (mkdtemp(pattern))
			path = pattern;
	}

	~TemporaryDirectory()
	{
		// depth first, without following links out of the directory
		if (!path.empty())
			nftw(path.c_str(), [](const char* entry, const struct stat*, int, FTW*) { return remove(entry); }, 16, FTW_DEPTH | FTW_PHYS);
	}

	TemporaryDirectory(const TemporaryDirectory&) = delete;
	TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;

	// the directory, with its closing '/'
	std::string root() const { return path + "/"; }
	std::string operator/(const std::string& name) const { return path + "/" + name; }

private:
	std::string path;
};

} // namespace vqm
