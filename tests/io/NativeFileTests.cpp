#include "io/FileLoaderRegistry.h"
#include "io/NativeFile.h"
#include "io/NativeFileLoader.h"
#include "io/PathCaseCheck.h"
#include "io/PathUtilities.h"

#include "TemporaryDirectory.h"
#include "TestDoubles.h"

#include <gtest/gtest.h>

#include <signal.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <fstream>
#include <sstream>

namespace vqm
{

static std::string contents(const std::string& path)
{
	std::ifstream in(path, std::ios::binary);
	std::stringstream text;
	text << in.rdbuf();
	return text.str();
}

static void put(const std::string& path, const std::string& text)
{
	std::ofstream(path, std::ios::binary) << text;
}

TEST(NativeFile, WriteModeCreatesAndTruncates)
{
	TemporaryDirectory dir;
	std::string path = dir / "out.bin";
	put(path, "0123456789");

	NativeFile file;
	ASSERT_TRUE(file.open(path, FileModeWrite, true));
	EXPECT_EQ(file.getSize(), 0u);
	EXPECT_EQ(file.write("ab", 2), 2);
	EXPECT_EQ(file.tell(), 2);
	EXPECT_EQ(contents(path), "ab");

	NativeFile reader;
	ASSERT_TRUE(reader.open(path, FileModeRead, true));
	EXPECT_EQ(reader.write("x", 1), -1);
}

TEST(NativeFile, AppendModeCreatesOrGoesToTheEndOnce)
{
	TemporaryDirectory dir;
	std::string path = dir / "log.bin";

	{
		NativeFile file;
		ASSERT_TRUE(file.open(path, FileModeAppend, true));
		EXPECT_EQ(file.write("abc", 3), 3);
	}
	{
		NativeFile file;
		ASSERT_TRUE(file.open(path, FileModeAppend, true));
		EXPECT_EQ(file.tell(), 3);
		file.write("de", 2);
		// the end is sought once at the open, not before every write
		ASSERT_TRUE(file.seek(0));
		file.write("X", 1);
	}
	EXPECT_EQ(contents(path), "Xbcde");
}

TEST(NativeFile, ReadAtTheEndSetsEndOfFileUntilSeekBack)
{
	TemporaryDirectory dir;
	std::string path = dir / "in.bin";
	put(path, "hello");

	NativeFile file;
	ASSERT_TRUE(file.open(path, FileModeRead, true));
	EXPECT_EQ(file.getSize(), 5u);

	char buffer[8];
	EXPECT_EQ(file.read(buffer, 5), 5);
	EXPECT_FALSE(file.isEof());
	EXPECT_EQ(file.read(buffer, 4), 0);
	EXPECT_TRUE(file.isEof());

	ASSERT_TRUE(file.seek(1));
	EXPECT_FALSE(file.isEof());
	EXPECT_EQ(file.read(buffer, 8), 4);
	EXPECT_TRUE(file.isEof());
	EXPECT_EQ(std::string(buffer, 4), "ello");
	EXPECT_EQ(file.tell(), 5);

	struct stat info;
	ASSERT_EQ(stat(path.c_str(), &info), 0);
	EXPECT_EQ(file.getModificationTime(), int64_t(info.st_mtime));
	unlink(path.c_str());
	EXPECT_EQ(file.getModificationTime(), 0);
}

TEST(NativeFile, FailedOpensLeaveAClosedFile)
{
	TemporaryDirectory dir;
	put(dir / "f", "x");

	NativeFile file;
	EXPECT_FALSE(file.open(dir / "missing", FileModeRead, true));
	EXPECT_FALSE(file.open(dir / "f", 3, true));
	EXPECT_FALSE(file.open(dir / "new", 7, false));
	EXPECT_EQ(getPathType(dir / "new"), 0);
	EXPECT_FALSE(file.open(dir.root(), FileModeRead, true));

	// longer than the platform path buffer, though it names an existing file
	std::string longPath = dir.root();
	while (longPath.size() < 600)
		longPath += "./";
	EXPECT_FALSE(file.open(longPath + "f", FileModeRead, true));

	char buffer[4];
	EXPECT_FALSE(file.isOpen());
	EXPECT_EQ(file.read(buffer, 4), -1);
	EXPECT_EQ(file.write(buffer, 4), -1);
	EXPECT_FALSE(file.seek(0));
	EXPECT_EQ(file.tell(), -1);
	EXPECT_EQ(file.getSize(), ~uint64_t(0));
	EXPECT_FALSE(file.isEof());
}

TEST(NativeFile, TwoHandlesShareWhatIsWrittenAtOnce)
{
	TemporaryDirectory dir;
	std::string path = dir / "shared.bin";

	NativeFile writer, reader;
	ASSERT_TRUE(writer.open(path, FileModeWrite, true));
	ASSERT_TRUE(reader.open(path, FileModeRead, true));
	EXPECT_TRUE(writer.isSameFile(reader));

	// nothing is held back in a buffer
	writer.write("abcd", 4);
	char buffer[4];
	EXPECT_EQ(reader.read(buffer, 4), 4);
	EXPECT_EQ(std::string(buffer, 4), "abcd");
	EXPECT_EQ(reader.getSize(), 4u);

	NativeFile other;
	put(dir / "other", "");
	ASSERT_TRUE(other.open(dir / "other", FileModeRead, true));
	EXPECT_FALSE(other.isSameFile(reader));
}

// A copy of a program while it runs: the system refuses to open it for writing.
class BusyFile
{
public:
	explicit BusyFile(const std::string& path)
	{
		if (system(("cp /bin/sleep '" + path + "'").c_str()) != 0)
			return;

		child = fork();
		if (child == 0)
		{
			execl(path.c_str(), "sleep", "30", (char*)nullptr);
			_exit(127);
		}

		// wait until the copy runs as the program
		std::string exe = "/proc/" + std::to_string(child) + "/exe";
		for (int i = 0; i < 500; ++i)
		{
			char target[4096];
			ssize_t length = readlink(exe.c_str(), target, sizeof(target) - 1);
			if (length > 0 && std::string(target, size_t(length)) == path)
				return;
			usleep(10000);
		}
	}

	~BusyFile()
	{
		if (child > 0)
		{
			kill(child, SIGKILL);
			waitpid(child, nullptr, 0);
		}
	}

	pid_t child = -1;
};

TEST(NativeFile, BusyFileIsTriedThreeTimesAndReported)
{
	TemporaryDirectory dir;
	std::string path = dir / "tool";
	BusyFile busy(path);
	ASSERT_GT(busy.child, 0);

	RecordingSink sink;

	NativeFile file;
	EXPECT_FALSE(file.open(path, FileModeWrite, true));
	EXPECT_EQ(file.getOpenAttempts(), NativeFile::kOpenAttempts);
	ASSERT_EQ(sink.errors.size(), 1u);
	EXPECT_EQ(sink.errors[0], "Error: Sharing violation on file '" + path + "' ... perhaps open in another program?\n");

	// quiet without reportProblems
	EXPECT_FALSE(file.open(path, FileModeAppend, false));
	EXPECT_EQ(sink.errors.size(), 1u);

	FileLoaderRegistry registry;
	registry.addLoader(new NativeFileLoader("", "", 10));
	EXPECT_EQ(registry.openFile(path, FileModeWrite), nullptr);
	EXPECT_EQ(sink.errors.size(), 2u);

	// reading it is no problem, and other failures are not tried again
	EXPECT_TRUE(file.open(path, FileModeRead, true));
	EXPECT_EQ(file.getOpenAttempts(), 1);
	EXPECT_FALSE(file.open(dir / "missing", FileModeRead, true));
	EXPECT_EQ(file.getOpenAttempts(), 1);
	EXPECT_EQ(sink.errors.size(), 2u);
}

class RecordingListener : public FileLoaderListener
{
public:
	std::vector<std::pair<std::string, uint32_t>> errors;
	void onFileError(const std::string& path, uint32_t kind) override { errors.emplace_back(path, kind); }
};

TEST(NativeFile, FullDiskIsToldToTheListeners)
{
	RecordingListener listener;
	FileLoaderRegistry::getInstance().addListener(&listener);

	NativeFile file;
	ASSERT_TRUE(file.open("/dev/full", FileModeWrite, false));
	EXPECT_EQ(file.write("abc", 3), -1);

	FileLoaderRegistry::getInstance().removeListener(&listener);
	EXPECT_EQ(file.write("abc", 3), -1);

	ASSERT_EQ(listener.errors.size(), 1u);
	EXPECT_EQ(listener.errors[0].first, "/dev/full");
	EXPECT_EQ(listener.errors[0].second, uint32_t(FileErrorDiskFull));
}

TEST(PathCaseCheck, WarnsOnceForAPathThatDiffersInCase)
{
	TemporaryDirectory dir;
	mkdir((dir / "Dir").c_str(), 0700);
	put(dir / "Dir/File.bin", "x");

	RecordingSink sink;

	EXPECT_TRUE(checkPathCase(dir / "Dir/File.bin"));
	EXPECT_TRUE(sink.warnings.empty());

	// however many components differ
	std::string path = dir / "DIR/file.BIN";
	EXPECT_FALSE(checkPathCase(path));
	ASSERT_EQ(sink.warnings.size(), 1u);
	EXPECT_EQ(sink.warnings[0], "Warning: Loading file with invalid case '" + path + "'.\n");

	// the last component alone
	EXPECT_FALSE(checkPathCase(dir / "Dir/file.bin"));
	EXPECT_EQ(sink.warnings.size(), 2u);

	// components that exist in neither form are passed over
	EXPECT_TRUE(checkPathCase(dir / "Dir/missing/File.bin"));
	EXPECT_TRUE(checkPathCase(dir / "Dir/"));
	EXPECT_TRUE(checkPathCase("C:"));
	EXPECT_EQ(sink.warnings.size(), 2u);

	// an exact opener of a file whose name exists in both forms gets no warning
	put(dir / "Dir/file.bin", "y");
	EXPECT_TRUE(checkPathCase(dir / "Dir/file.bin"));
	NativeFile file;
	EXPECT_TRUE(file.open(dir / "Dir/File.bin", FileModeRead, true));
	EXPECT_EQ(sink.warnings.size(), 2u);
}

TEST(PathCaseCheck, LooksThroughParentComponents)
{
	TemporaryDirectory dir;
	mkdir((dir / "Dir").c_str(), 0700);
	mkdir((dir / "Sub").c_str(), 0700);

	RecordingSink sink;
	EXPECT_TRUE(checkPathCase(dir / "Dir/../Sub/x"));
	EXPECT_FALSE(checkPathCase(dir / "Dir/../sub/x"));
	EXPECT_EQ(sink.warnings.size(), 1u);
}

TEST(PathCaseCheck, CutsLongPrefixes)
{
	TemporaryDirectory dir;
	std::string root = dir.root();
	ASSERT_LT(root.size(), 100u);

	// what remains of a long name after the cut exists in another case
	std::string longName(300, 'N');
	std::string cut = longName.substr(0, 259 - root.size());
	std::string lowered(cut.size(), 'n');
	put(root + lowered, "");

	RecordingSink sink;
	EXPECT_FALSE(checkPathCase(root + longName));
	EXPECT_EQ(sink.warnings.size(), 1u);
	EXPECT_TRUE(checkPathCase(root + std::string(300, 'M')));
}

} // namespace vqm
