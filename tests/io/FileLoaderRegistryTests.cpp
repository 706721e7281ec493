#include "io/FileLoaderRegistry.h"
#include "io/NativeFile.h"
#include "io/NativeFileLoader.h"
#include "io/PathUtilities.h"

#include "TemporaryDirectory.h"
#include "TestDoubles.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

#include <algorithm>
#include <fstream>
#include <map>
#include <memory>
#include <sstream>

namespace vqm
{

// Delivers nothing, or in-memory files for the names it holds; keeps a trace of the calls.
class TraceLoader : public IFileLoader
{
public:
	TraceLoader(uint32_t priority_, std::string name_, std::vector<std::string>& trace_)
	    : IFileLoader(priority_)
	    , name(name_)
	    , trace(trace_)
	{
	}
	~TraceLoader() override { trace.push_back("~" + name); }

	File* open(const std::string& path, uint32_t mode, bool isAbsolute) override
	{
		trace.push_back(name + (isAbsolute ? " abs " : " rel ") + path);
		auto it = files.find(path);
		if (it == files.end())
			return nullptr;
		MemoryFile* file = new MemoryFile();
		file->data = it->second;
		file->writeLimit = writeLimit;
		if (mode == FileModeWrite)
		{
			file->data.clear();
			file->keepOnClose = &it->second;
		}
		return file;
	}
	void listDirectory(const std::string&, std::vector<DirectoryEntry>& entries) override
	{
		entries.push_back({name, PathTypeFile, 0, 0});
	}
	void invalidate(const std::string& path, bool isAbsolute) override { trace.push_back(name + (isAbsolute ? " invalidate abs " : " invalidate rel ") + path); }
	bool exists(const std::string& path, bool) override { return files.count(path) != 0; }
	void changeRoot(const std::string&, const std::string&) override {}
	bool queryFile(const std::string&, bool, uint64_t*, int64_t*, uint32_t*) override { return false; }

	std::string name;
	std::vector<std::string>& trace;
	std::map<std::string, std::vector<uint8_t>> files;
	uint32_t writeLimit = ~0u;
};

static std::string contents(const std::string& path)
{
	std::ifstream in(path, std::ios::binary);
	std::stringstream text;
	text << in.rdbuf();
	return text.str();
}

TEST(FileLoaderRegistry, AsksLoadersByPriorityThenRegistration)
{
	std::vector<std::string> trace;
	{
		FileLoaderRegistry registry;
		registry.addLoader(new TraceLoader(20, "a", trace));
		registry.addLoader(new TraceLoader(10, "b", trace));
		registry.addLoader(new TraceLoader(20, "c", trace));
		registry.addLoader(new TraceLoader(5, "d", trace));
		registry.addLoader(new TraceLoader(10, "e", trace));

		EXPECT_EQ(registry.openFile("x", FileModeRead), nullptr);
		EXPECT_EQ(trace, (std::vector<std::string>{"d rel x", "b rel x", "e rel x", "a rel x", "c rel x"}));

		std::vector<DirectoryEntry> entries;
		registry.listDirectory("any", entries);
		ASSERT_EQ(entries.size(), 5u);
		EXPECT_EQ(entries[0].name + entries[4].name, "dc");

		trace.clear();
	}
	// the registry deletes its loaders in list order
	EXPECT_EQ(trace, (std::vector<std::string>{"~d", "~b", "~e", "~a", "~c"}));
}

TEST(FileLoaderRegistry, FirstDeliveredFileWinsAndRemovalKeepsOrder)
{
	std::vector<std::string> trace;
	FileLoaderRegistry registry;
	TraceLoader* low = new TraceLoader(1, "low", trace);
	TraceLoader* high = new TraceLoader(2, "high", trace);
	TraceLoader* last = new TraceLoader(3, "last", trace);
	registry.addLoader(last);
	registry.addLoader(high);
	registry.addLoader(low);
	high->files["C:/f"] = {1};
	last->files["C:/f"] = {2};

	std::unique_ptr<File> file(registry.openFile("C:/f", FileModeRead));
	ASSERT_TRUE(file);
	EXPECT_EQ(file->getSize(), 1u);
	EXPECT_EQ(trace, (std::vector<std::string>{"low abs C:/f", "high abs C:/f"}));
	EXPECT_TRUE(registry.fileExists("C:/f"));
	EXPECT_FALSE(registry.fileExists("C:/g"));

	EXPECT_TRUE(registry.removeLoader(high));
	EXPECT_FALSE(registry.removeLoader(high));
	delete high;

	trace.clear();
	file.reset(registry.openFile("C:/f", FileModeRead));
	ASSERT_TRUE(file);
	uint8_t byte = 0;
	file->read(&byte, 1);
	EXPECT_EQ(byte, 2);

	registry.invalidate("\\\\server\\f");
	registry.invalidate("f");
	EXPECT_EQ(trace, (std::vector<std::string>{"low abs C:/f", "last abs C:/f", "low invalidate abs \\\\server\\f", "last invalidate abs \\\\server\\f", "low invalidate rel f", "last invalidate rel f"}));
}

TEST(FileLoaderRegistry, NativeLoaderResolvesBelowItsRoot)
{
	TemporaryDirectory one, two;
	std::ofstream(one / "a.bin") << "one";
	std::ofstream(two / "a.bin") << "two";
	mkdir((two / "sub").c_str(), 0700);

	FileLoaderRegistry registry;
	registry.addLoader(new NativeFileLoader(two.root(), "", 10));
	registry.addLoader(new NativeFileLoader(one.root(), "", 10));

	std::unique_ptr<File> file(registry.openFile("a.bin", FileModeRead));
	ASSERT_TRUE(file && file->isNative());
	EXPECT_EQ(static_cast<NativeFile*>(file.get())->getPath(), two / "a.bin");

	// absolute paths are not put behind a root
	file.reset(registry.openFile(one / "a.bin", FileModeRead));
	ASSERT_TRUE(file);
	EXPECT_EQ(static_cast<NativeFile*>(file.get())->getPath(), one / "a.bin");

	EXPECT_TRUE(registry.fileExists("a.bin"));
	// a directory is no file
	EXPECT_FALSE(registry.fileExists("sub"));
	EXPECT_EQ(registry.openFile("missing.bin", FileModeRead), nullptr);
}

TEST(FileLoaderRegistry, SetRootMovesTheLoadersOfTheCurrentRoot)
{
	TemporaryDirectory dir;
	std::ofstream(dir / "a.bin") << "x";

	FileLoaderRegistry registry;
	NativeFileLoader* unrooted = new NativeFileLoader("", "", 1);
	NativeFileLoader* rooted = new NativeFileLoader("/elsewhere/", "", 2);
	registry.addLoader(unrooted);
	registry.addLoader(rooted);

	registry.setRoot(dir.root());
	EXPECT_EQ(unrooted->getRootDirectory(), dir.root());
	EXPECT_EQ(rooted->getRootDirectory(), "/elsewhere/");
	EXPECT_TRUE(registry.fileExists("a.bin"));

	registry.setRoot("/next/");
	EXPECT_EQ(unrooted->getRootDirectory(), "/next/");
}

TEST(FileLoaderRegistry, ListDirectoryMergesLoadersWithoutHiddenEntries)
{
	TemporaryDirectory one, two;
	std::ofstream(one / "a.bin") << "12345";
	std::ofstream(one / ".hidden") << "x";
	mkdir((one / "sub").c_str(), 0700);
	std::ofstream(two / "a.bin") << "1";
	std::ofstream(two / "b.bin") << "1";

	FileLoaderRegistry registry;
	registry.addLoader(new NativeFileLoader(one.root(), "", 1));
	registry.addLoader(new NativeFileLoader(two.root(), "", 2));

	std::vector<DirectoryEntry> entries;
	registry.listDirectory("", entries);
	std::sort(entries.begin(), entries.end(), [](const DirectoryEntry& a, const DirectoryEntry& b)
	    { return a.name < b.name; });

	ASSERT_EQ(entries.size(), 3u);
	EXPECT_EQ(entries[0].name, "a.bin");
	EXPECT_EQ(entries[0].size, 5u); // from the first loader
	EXPECT_EQ(entries[0].type, uint32_t(PathTypeFile));
	EXPECT_EQ(entries[1].name, "b.bin");
	EXPECT_EQ(entries[2].name, "sub");
	EXPECT_EQ(entries[2].type, uint32_t(PathTypeDirectory));
}

TEST(FileLoaderRegistry, CopyFileBetweenNativeFiles)
{
	TemporaryDirectory dir;
	std::ofstream(dir / "src.bin") << "source";
	std::ofstream(dir / "dst.bin") << "old";

	FileLoaderRegistry registry;
	registry.addLoader(new NativeFileLoader(dir.root(), "", 10));

	EXPECT_FALSE(registry.copyFile("src.bin", "dst.bin", false));
	EXPECT_EQ(contents(dir / "dst.bin"), "old");

	EXPECT_TRUE(registry.copyFile("src.bin", "dst.bin", true));
	EXPECT_EQ(contents(dir / "dst.bin"), "source");
	EXPECT_TRUE(registry.copyFile("src.bin", "new.bin", false));
	EXPECT_EQ(contents(dir / "new.bin"), "source");

	EXPECT_FALSE(registry.copyFile("missing.bin", "other.bin", true));
	EXPECT_EQ(getPathType(dir / "other.bin"), PathTypeNone);

	// onto itself, by another spelling: refused before anything is truncated
	EXPECT_FALSE(registry.copyFile("src.bin", "./src.bin", true));
	EXPECT_EQ(contents(dir / "src.bin"), "source");
}

TEST(FileLoaderRegistry, CopyFileInChunksStopsAtAShortWrite)
{
	std::vector<std::string> trace;
	FileLoaderRegistry registry;
	TraceLoader* loader = new TraceLoader(1, "mem", trace);
	registry.addLoader(loader);

	std::vector<uint8_t> big(20000);
	for (size_t i = 0; i < big.size(); ++i)
		big[i] = uint8_t(i * 7);
	loader->files["big"] = big;
	loader->files["out"] = {};

	EXPECT_TRUE(registry.copyFile("big", "out", true));
	EXPECT_EQ(loader->files["out"], big);

	loader->writeLimit = 100;
	EXPECT_FALSE(registry.copyFile("big", "out", true));
}

TEST(FileLoaderRegistry, ListenersAreToldInOrder)
{
	struct Listener : FileLoaderListener
	{
		std::string name;
		std::vector<std::string>* calls;
		void onFileError(const std::string& path, uint32_t kind) override { calls->push_back(name + " " + path + " " + std::to_string(kind)); }
	};

	std::vector<std::string> calls;
	Listener first, second;
	first.name = "first";
	first.calls = &calls;
	second.name = "second";
	second.calls = &calls;

	FileLoaderRegistry registry;
	registry.notifyFileError("p", FileErrorDiskFull);
	registry.addListener(&first);
	registry.addListener(&second);
	registry.notifyFileError("p", FileErrorDiskFull);
	registry.removeListener(&first);
	registry.notifyFileError("q", FileErrorCorruptData);

	EXPECT_EQ(calls, (std::vector<std::string>{"first p 1", "second p 1", "second q 0"}));
}

TEST(Logger, SinksReceiveFormattedLinesInOrder)
{
	RecordingSink sinks[Logger::kMaxSinks];
	RecordingSink extra(false);
	Logger& logger = Logger::getInstance();

	EXPECT_EQ(logger.getSinkCount(), Logger::kMaxSinks);
	EXPECT_FALSE(logger.addSink(&extra));
	EXPECT_FALSE(logger.addSink(&sinks[0]));

	logger.warning("Warning: %s %d.\n", "shape", 7);
	logger.info("i");
	logger.error("e%c", '!');
	for (const RecordingSink& sink : sinks)
	{
		EXPECT_EQ(sink.warnings, std::vector<std::string>{"Warning: shape 7.\n"});
		EXPECT_EQ(sink.infos, std::vector<std::string>{"i"});
		EXPECT_EQ(sink.errors, std::vector<std::string>{"e!"});
		EXPECT_EQ(sink.lengths, (std::vector<size_t>{18, 1, 2}));
	}

	EXPECT_TRUE(logger.removeSink(&sinks[2]));
	EXPECT_FALSE(logger.removeSink(&extra));
	EXPECT_TRUE(logger.addSink(&extra));

	// a long line is cut; the length given is at most the capacity
	std::string text(3000, 'x');
	logger.info("%s", text.c_str());
	EXPECT_EQ(sinks[2].infos.size(), 1u);
	ASSERT_EQ(extra.infos.size(), 1u);
	EXPECT_EQ(extra.infos[0], std::string(Logger::kLineCapacity - 1, 'x'));
	EXPECT_EQ(extra.lengths.back(), Logger::kLineCapacity);
}

} // namespace vqm
