#include "io/FileLoaderRegistry.h"
#include "io/NativeFile.h"
#include "io/PathCaseCheck.h"

#include "TemporaryDirectory.h"
#include "TestDoubles.h"

#include <gtest/gtest.h>

#include <signal.h>
#include <sys/wait.h>

#include <fstream>
#include <sstream>

namespace vqm
{

static std::string contents(const std::string& path)
{
	std::stringstream text;
	text << std::ifstream(path, std::ios::binary).rdbuf();
	return text.str();
}

TEST(NativeFile, WriteTruncatesAppendGoesToTheEndOnce)
{
	TemporaryDirectory dir;
	std::string path = dir / "out.bin";
	std::ofstream(path) << "0123456789";
	{
		NativeFile file;
		ASSERT_TRUE(file.open(path, FileModeWrite, true));
		EXPECT_EQ(file.getSize(), 0u);
		EXPECT_EQ(file.write("abc", 3), 3);
	}
	{
		NativeFile file;
		ASSERT_TRUE(file.open(path, FileModeAppend, true));
		EXPECT_EQ(file.tell(), 3);
		file.write("de", 2);
		// the end is sought at the open, not before every write
		ASSERT_TRUE(file.seek(0));
		file.write("X", 1);
	}
	EXPECT_EQ(contents(path), "Xbcde");

	NativeFile created;
	ASSERT_TRUE(created.open(dir / "new.bin", FileModeAppend, true));
	EXPECT_EQ(created.write("n", 1), 1);
	EXPECT_EQ(contents(dir / "new.bin"), "n");
}

TEST(NativeFile, ReadAtTheEndSetsEndOfFileUntilSeekBack)
{
	TemporaryDirectory dir;
	std::string path = dir / "in.bin";
	std::ofstream(path) << "hello";

	NativeFile file;
	ASSERT_TRUE(file.open(path, FileModeRead, true));
	char buffer[8];
	EXPECT_EQ(file.read(buffer, 5), 5);
	EXPECT_FALSE(file.isEof());
	EXPECT_EQ(file.read(buffer, 4), 0);
	EXPECT_TRUE(file.isEof());

	ASSERT_TRUE(file.seek(1));
	EXPECT_FALSE(file.isEof());
	EXPECT_EQ(file.read(buffer, 8), 4);
	EXPECT_EQ(std::string(buffer, 4), "ello");
	EXPECT_EQ(file.write("x", 1), -1);

	EXPECT_GT(file.getModificationTime(), 0);
	unlink(path.c_str());
	EXPECT_EQ(file.getModificationTime(), 0);
}

TEST(NativeFile, FailedOpensLeaveAClosedFile)
{
	TemporaryDirectory dir;
	std::ofstream(dir / "f") << "x";

	NativeFile file;
	EXPECT_FALSE(file.open(dir / "missing", FileModeRead, true));
	EXPECT_FALSE(file.open(dir / "new", 3, true));
	EXPECT_FALSE(file.open(dir.root(), FileModeRead, true));

	// longer than the platform's path buffer, though it names an existing file
	std::string longPath = dir.root();
	while (longPath.size() < 600)
		longPath += "./";
	EXPECT_FALSE(file.open(longPath + "f", FileModeRead, true));

	char buffer[4];
	EXPECT_EQ(file.read(buffer, 4), -1);
	EXPECT_EQ(file.getSize(), ~uint64_t(0));
	EXPECT_FALSE(std::ifstream(dir / "new").good());
}

TEST(NativeFile, TwoHandlesShareWhatIsWrittenAtOnce)
{
	TemporaryDirectory dir;
	NativeFile writer, reader;
	ASSERT_TRUE(writer.open(dir / "shared.bin", FileModeWrite, true));
	ASSERT_TRUE(reader.open(dir / "shared.bin", FileModeRead, true));
	EXPECT_TRUE(writer.isSameFile(reader));

	// nothing is held back in a buffer
	writer.write("abcd", 4);
	char buffer[4];
	EXPECT_EQ(reader.read(buffer, 4), 4);
	EXPECT_EQ(std::string(buffer, 4), "abcd");
}

TEST(NativeFile, BusyFileIsTriedThreeTimesAndReported)
{
	// a copy of a program while it runs: the system refuses to open it for writing
	TemporaryDirectory dir;
	std::string path = dir / "tool";
	ASSERT_EQ(system(("cp /bin/sleep " + path).c_str()), 0);
	pid_t child = fork();
	if (child == 0)
	{
		execl(path.c_str(), "sleep", "30", (char*)nullptr);
		_exit(127);
	}
	ASSERT_GT(child, 0);

	char target[4096] = {};
	std::string exe = "/proc/" + std::to_string(child) + "/exe";
	for (int i = 0; i < 500 && path != target; ++i, usleep(10000))
		target[std::max<ssize_t>(0, readlink(exe.c_str(), target, sizeof(target) - 1))] = 0;

	RecordingSink sink;
	NativeFile file;
	EXPECT_FALSE(file.open(path, FileModeWrite, true));
	EXPECT_EQ(file.getOpenAttempts(), NativeFile::kOpenAttempts);
	ASSERT_EQ(sink.errors.size(), 1u);
	EXPECT_EQ(sink.errors[0], "Error: Sharing violation on file '" + path + "' ... perhaps open in another program?\n");

	EXPECT_FALSE(file.open(path, FileModeAppend, false));
	EXPECT_EQ(sink.errors.size(), 1u);

	// other failures are not tried again
	EXPECT_TRUE(file.open(path, FileModeRead, true));
	EXPECT_FALSE(file.open(dir / "missing", FileModeWrite + 5, true));
	EXPECT_EQ(file.getOpenAttempts(), 0);
	EXPECT_FALSE(file.open(dir / "missing", FileModeRead, true));
	EXPECT_EQ(file.getOpenAttempts(), 1);

	kill(child, SIGKILL);
	waitpid(child, nullptr, 0);
}

TEST(NativeFile, FullDiskIsToldToTheListeners)
{
	struct Listener : FileLoaderListener
	{
		std::vector<std::pair<std::string, uint32_t>> errors;
		void onFileError(const std::string& path, uint32_t kind) override { errors.emplace_back(path, kind); }
	} listener;

	FileLoaderRegistry::getInstance().addListener(&listener);
	NativeFile file;
	ASSERT_TRUE(file.open("/dev/full", FileModeWrite, false));
	EXPECT_EQ(file.write("abc", 3), -1);
	FileLoaderRegistry::getInstance().removeListener(&listener);

	ASSERT_EQ(listener.errors.size(), 1u);
	EXPECT_EQ(listener.errors[0].first, "/dev/full");
	EXPECT_EQ(listener.errors[0].second, uint32_t(FileErrorDiskFull));
}

TEST(PathCaseCheck, WarnsOnceForAPathThatDiffersInCase)
{
	TemporaryDirectory dir;
	mkdir((dir / "Dir").c_str(), 0700);
	mkdir((dir / "Sub").c_str(), 0700);
	std::ofstream(dir / "Dir/File.bin") << "x";

	RecordingSink sink;
	EXPECT_TRUE(checkPathCase(dir / "Dir/File.bin"));
	EXPECT_TRUE(sink.warnings.empty());

	// however many components differ
	std::string path = dir / "DIR/file.BIN";
	EXPECT_FALSE(checkPathCase(path));
	ASSERT_EQ(sink.warnings.size(), 1u);
	EXPECT_EQ(sink.warnings[0], "Warning: Loading file with invalid case '" + path + "'.\n");

	EXPECT_FALSE(checkPathCase(dir / "Dir/file.bin"));
	// the component behind two dots is looked up through the whole prefix
	EXPECT_TRUE(checkPathCase(dir / "Dir/../Sub/x"));
	EXPECT_FALSE(checkPathCase(dir / "Dir/../sub/x"));
	EXPECT_EQ(sink.warnings.size(), 3u);

	// what exists in neither form, and a closing separator, are passed over
	EXPECT_TRUE(checkPathCase(dir / "Dir/missing/File.bin"));
	EXPECT_TRUE(checkPathCase(dir / "Dir/"));

	// a name stored in both forms opens exactly, without a warning
	std::ofstream(dir / "Dir/file.bin") << "y";
	NativeFile file;
	EXPECT_TRUE(file.open(dir / "Dir/file.bin", FileModeRead, true));
	EXPECT_EQ(sink.warnings.size(), 3u);
}

TEST(PathCaseCheck, CutsLongPrefixes)
{
	TemporaryDirectory dir;
	std::string root = dir.root();

	// what remains of a long name after the cut exists in another case
	std::string longName(300, 'N');
	std::ofstream(root + std::string(259 - root.size(), 'n')) << "";

	RecordingSink sink;
	EXPECT_FALSE(checkPathCase(root + longName));
	EXPECT_TRUE(checkPathCase(root + std::string(300, 'M')));
	EXPECT_EQ(sink.warnings.size(), 1u);
}

} // namespace vqm
