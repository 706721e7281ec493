#include "io/PathUtilities.h"

#include "TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <fstream>

namespace vqm
{

TEST(PathUtilities, AbsolutePaths)
{
	EXPECT_TRUE(isAbsolutePath("C:/x"));
	EXPECT_TRUE(isAbsolutePath("C:x"));
	EXPECT_TRUE(isAbsolutePath("\\\\server\\share"));
	// the byte in front of ':' is not examined
	EXPECT_TRUE(isAbsolutePath("?:"));
	// POSIX root
	EXPECT_TRUE(isAbsolutePath("/x"));

	EXPECT_FALSE(isAbsolutePath(""));
	EXPECT_FALSE(isAbsolutePath("x"));
	EXPECT_FALSE(isAbsolutePath("\\"));
	EXPECT_FALSE(isAbsolutePath("\\x"));
	EXPECT_FALSE(isAbsolutePath("a/b:c"));
}

TEST(PathUtilities, Directory)
{
	std::string directory;
	getDirectory("a/b/c.vqm", directory);
	EXPECT_EQ(directory, "a/b/");

	getDirectory("/c.vqm", directory);
	EXPECT_EQ(directory, "/");

	directory = "kept/";
	getDirectory("c.vqm", directory);
	EXPECT_EQ(directory, "kept/");

	std::string fresh;
	getDirectory("c.vqm", fresh);
	EXPECT_EQ(fresh, "");

	// backslashes are no separator here
	getDirectory("a\\b/c\\d", directory);
	EXPECT_EQ(directory, "a\\b/");
}

TEST(PathUtilities, FileName)
{
	std::string name;
	getFileName("a/b/c.vqm.shapes", name, true);
	EXPECT_EQ(name, "c.vqm.shapes");

	getFileName("a/b/c.vqm.shapes", name, false);
	EXPECT_EQ(name, "c");

	getFileName("a/b/", name, true);
	EXPECT_EQ(name, "");

	getFileName("C:\\out\\level.vqm", name, true);
	EXPECT_EQ(name, "C:\\out\\level.vqm");

	getFileName("dir.d/noext", name, false);
	EXPECT_EQ(name, "noext");

	// the output may be the input
	std::string path = "x/y/z.png";
	getFileName(path, path, true);
	EXPECT_EQ(path, "z.png");
}

static std::string relative(const std::string& base, const std::string& path, int32_t expected)
{
	std::string result = "<untouched>";
	EXPECT_EQ(getRelativePath(base, path, path, result), expected) << base << " " << path;
	return result;
}

TEST(PathUtilities, RelativePathBelowBase)
{
	EXPECT_EQ(relative("c:/proj/out/", "c:/proj/out/tex/a.png", 1), "tex/a.png");
	EXPECT_EQ(relative("", "c:/a.png", 1), "c:/a.png");
	EXPECT_EQ(relative("c:/proj/out/", "c:/proj/out/", 1), "");
}

TEST(PathUtilities, RelativePathAboveBase)
{
	EXPECT_EQ(relative("c:/proj/out/", "c:/proj/tex/a.png", 1), "../tex/a.png");
	EXPECT_EQ(relative("c:/proj/out/sub/", "c:/proj/tex/a.png", 1), "../../tex/a.png");
	// common bytes stop inside a name: back to the '/' after proj
	EXPECT_EQ(relative("c:/proj/output/", "c:/proj/out.png", 1), "../out.png");
	// a base without its closing '/' still counts the directories behind the split
	EXPECT_EQ(relative("c:/proj/out", "c:/proj/tex/a.png", 1), "tex/a.png");
}

TEST(PathUtilities, RelativePathNothingInCommon)
{
	EXPECT_EQ(relative("c:/proj/", "d:/proj/a.png", 0), "<untouched>");
	EXPECT_EQ(relative("/proj/a/", "/other/b.png", 0), "<untouched>");
	EXPECT_EQ(relative("c:/proj/", "", 0), "<untouched>");
	// shared bytes but no '/' among them
	EXPECT_EQ(relative("abc/", "abd/x", 0), "<untouched>");
}

TEST(PathUtilities, RelativePathComparesOneFormTakesTextFromOther)
{
	std::string path = "C:/Proj/Tex/A.png";
	std::string result;
	EXPECT_EQ(getRelativePath("c:/proj/out/", "c:/proj/tex/a.png", path, result), 1);
	EXPECT_EQ(result, "../Tex/A.png");

	EXPECT_EQ(getRelativePath("c:/proj/", "c:/proj/tex/a.png", path, result), 1);
	EXPECT_EQ(result, "Tex/A.png");

	// the result may replace the path it came from
	EXPECT_EQ(getRelativePath("c:/proj/out/", "c:/proj/tex/a.png", path, path), 1);
	EXPECT_EQ(path, "../Tex/A.png");
}

TEST(PathUtilities, PathType)
{
	TemporaryDirectory dir;
	ASSERT_FALSE(dir.root().empty());

	std::ofstream(dir / "file.bin") << "x";

	EXPECT_EQ(getPathType(dir / "file.bin"), PathTypeFile);
	EXPECT_EQ(getPathType(dir.root()), PathTypeDirectory);
	EXPECT_EQ(getPathType(dir / ""), PathTypeDirectory);
	EXPECT_EQ(getPathType(dir / "missing"), PathTypeNone);
	EXPECT_EQ(getPathType(""), PathTypeNone);
	// special entries are no file
	EXPECT_EQ(getPathType("/dev/null"), PathTypeNone);
}

TEST(PathUtilities, PathTypeOfOverlongPath)
{
	TemporaryDirectory dir;
	std::string path = dir.root();
	// an existing directory reached through a path that does not fit the buffer
	while (path.size() <= 520)
		path += "./";

	EXPECT_EQ(getPathType(path.substr(0, 520)), PathTypeDirectory);
	EXPECT_EQ(getPathType(path), PathTypeNone);
}

} // namespace vqm
