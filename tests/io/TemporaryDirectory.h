// A fresh directory under /tmp for one test, removed with everything in it at the end.
#pragma once

#include <dirent.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

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
			path_ = pattern;
	}

	~TemporaryDirectory()
	{
		if (!path_.empty())
			removeTree(path_);
	}

	TemporaryDirectory(const TemporaryDirectory&) = delete;
	TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;

	// the directory, with a closing '/'
	std::string root() const { return path_ + "/"; }
	std::string operator/(const std::string& name) const { return path_ + "/" + name; }

private:
	static void removeTree(const std::string& path)
	{
		if (DIR* dir = opendir(path.c_str()))
		{
			while (dirent* entry = readdir(dir))
			{
				std::string name = entry->d_name;
				if (name == "." || name == "..")
					continue;

				std::string child = path + "/" + name;
				struct stat info;
				if (lstat(child.c_str(), &info) == 0 && S_ISDIR(info.st_mode))
				{
					chmod(child.c_str(), 0700);
					removeTree(child);
				}
				else
					unlink(child.c_str());
			}
			closedir(dir);
		}
		rmdir(path.c_str());
	}

	std::string path_;
};

} // namespace vqm
