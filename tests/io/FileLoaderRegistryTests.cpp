#include "io/FileLoaderRegistry.h"
#include "io/NativeFile.h"
#include "io/NativeFileLoader.h"
#include "io/PathUtilities.h"

#include "TemporaryDirectory.h"
#include "TestDoubles.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <map>
#include <memory>
#include <sstream>

namespace vqm
{

// Delivers in-memory files for the names it holds and keeps a trace of the calls.
class TraceLoader : public IFileLoader
{
public:
	TraceLoader(uint32_t priority_, std::string name_, std::vector<std::string>& trace_)
	    : IFileLoader(priority_), name(name_), trace(trace_)
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
		file->data = mode == FileModeWrite ? std::vector<uint8_t>() : it->second;
		file->keepOnClose = mode == FileModeWrite ? &it->second : nullptr;
		file->writeLimit = writeLimit;
		return file;
	}
	void listDirectory(const std::string&, std::vector<DirectoryEntry>&) override {}
	void invalidate(const std::string&, bool) override {}
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
	std::stringstream text;
	text << std::ifstream(path, std::ios::binary).rdbuf();
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
		TraceLoader* d = new TraceLoader(5, "d", trace);
		registry.addLoader(d);
		TraceLoader* e = new TraceLoader(10, "e", trace);
		registry.addLoader(e);

		EXPECT_EQ(registry.openFile("x", FileModeRead), nullptr);
		EXPECT_EQ(trace, (std::vector<std::string>{"d rel x", "b rel x", "e rel x", "a rel x", "c rel x"}));

		// the first file delivered wins; removal keeps the others' order
		e->files["C:/f"] = {1};
		registry.addLoader(new TraceLoader(30, "z", trace));
		EXPECT_TRUE(registry.removeLoader(d));
		EXPECT_FALSE(registry.removeLoader(d));
		delete d;
		trace.clear();
		std::unique_ptr<File> file(registry.openFile("C:/f", FileModeRead));
		ASSERT_TRUE(file);
		EXPECT_EQ(file->getSize(), 1u);
		EXPECT_EQ(trace, (std::vector<std::string>{"b abs C:/f", "e abs C:/f"}));
		EXPECT_TRUE(registry.fileExists("C:/f"));
		EXPECT_FALSE(registry.fileExists("C:/g"));
		trace.clear();
	}
	// the registry deletes its loaders in list order
	EXPECT_EQ(trace, (std::vector<std::string>{"~b", "~e", "~a", "~c", "~z"}));
}

TEST(FileLoaderRegistry, NativeLoadersResolveBelowTheirRoots)
{
	TemporaryDirectory one, two;
	std::ofstream(one / "a.bin") << "12345";
	std::ofstream(one / ".hidden") << "x";
	mkdir((one / "sub").c_str(), 0700);
	std::ofstream(two / "a.bin") << "1";
	std::ofstream(two / "b.bin") << "1";

	FileLoaderRegistry registry;
	registry.addLoader(new NativeFileLoader(two.root(), "", 2));
	registry.addLoader(new NativeFileLoader(one.root(), "", 1));

	std::unique_ptr<File> file(registry.openFile("a.bin", FileModeRead));
	ASSERT_TRUE(file && file->isNative());
	EXPECT_EQ(static_cast<NativeFile*>(file.get())->getPath(), one / "a.bin");
	// absolute paths are not put behind a root
	file.reset(registry.openFile(two / "a.bin", FileModeRead));
	ASSERT_TRUE(file);
	EXPECT_EQ(static_cast<NativeFile*>(file.get())->getPath(), two / "a.bin");

	EXPECT_TRUE(registry.fileExists("b.bin"));
	EXPECT_FALSE(registry.fileExists("sub"));
	EXPECT_EQ(registry.openFile("missing.bin", FileModeRead), nullptr);

	// merged, first loader first, without hidden entries
	std::vector<DirectoryEntry> entries;
	registry.listDirectory("", entries);
	std::sort(entries.begin(), entries.end(), [](const DirectoryEntry& a, const DirectoryEntry& b) { return a.name < b.name; });
	ASSERT_EQ(entries.size(), 3u);
	EXPECT_EQ(entries[0].name + " " + entries[1].name + " " + entries[2].name, "a.bin b.bin sub");
	EXPECT_EQ(entries[0].size, 5u);
	EXPECT_EQ(entries[0].type, uint32_t(PathTypeFile));
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
	first.name = "first", first.calls = &calls;
	second.name = "second", second.calls = &calls;

	FileLoaderRegistry registry;
	registry.addListener(&first);
	registry.addListener(&second);
	registry.notifyFileError("p", FileErrorDiskFull);
	registry.removeListener(&first);
	registry.notifyFileError("q", FileErrorCorruptData);

	EXPECT_EQ(calls, (std::vector<std::string>{"first p 1", "second p 1", "second q 0"}));
}

TEST(Logger, UpToSixSinksReceiveLinesCutToCapacity)
{
	RecordingSink sinks[Logger::kMaxSinks];
	RecordingSink extra(false);
	Logger& logger = Logger::getInstance();
	EXPECT_FALSE(logger.addSink(&extra));

	logger.warning("Warning: %s %d.\n", "shape", 7);
	logger.error("e");
	for (const RecordingSink& sink : sinks)
	{
		EXPECT_EQ(sink.warnings, std::vector<std::string>{"Warning: shape 7.\n"});
		EXPECT_EQ(sink.errors, std::vector<std::string>{"e"});
		EXPECT_EQ(sink.lengths, (std::vector<size_t>{18, 1}));
	}

	EXPECT_TRUE(logger.removeSink(&sinks[2]));
	EXPECT_TRUE(logger.addSink(&extra));
	logger.info("%s", std::string(3000, 'x').c_str());
	EXPECT_TRUE(sinks[2].infos.empty());
	ASSERT_EQ(extra.infos.size(), 1u);
	EXPECT_EQ(extra.infos[0], std::string(Logger::kLineCapacity - 1, 'x'));
	EXPECT_EQ(extra.lengths.back(), Logger::kLineCapacity);
}

} // namespace vqm
