#include "io/NativeFile.h"
#include "io/UGCProtection.h"

#include "TemporaryDirectory.h"
#include "TestDoubles.h"

#include <gtest/gtest.h>

#include <string.h>

namespace vqm
{

TEST(UGCProtection, WritesUseOneBlockPerStartedSixtyFourBytes)
{
	MemoryFile inner;
	UGCProtection stream(5, &inner, false);
	uint8_t bytes[65] = {1, 2, 3};

	// an empty write uses no keystream but still reaches the inner file
	EXPECT_EQ(stream.write(bytes, 0), 0);
	EXPECT_EQ(stream.getBlockCounter(), 0u);
	EXPECT_EQ(inner.writes, std::vector<uint32_t>{0});

	EXPECT_EQ(stream.write(bytes, 64), 64);
	EXPECT_EQ(stream.getBlockCounter(), 1u);
	EXPECT_EQ(stream.write(bytes, 65), 65);
	EXPECT_EQ(stream.getBlockCounter(), 3u);
	EXPECT_EQ(stream.write(bytes, 1), 1);
	EXPECT_EQ(stream.getBlockCounter(), 4u);

	// scrambled on the way out, the caller's buffer left as it was
	EXPECT_EQ(bytes[0], 1);
	EXPECT_NE(0, memcmp(inner.data.data(), bytes, 3));
}

TEST(UGCProtection, ReadBackNeedsTheSameKeyAndCallSizes)
{
	MemoryFile disk;
	const uint8_t plain[12] = {'s', 'h', 'a', 'p', 'e', ' ', 'b', 'l', 'o', 'b', '!', '?'};
	{
		UGCProtection writer(42, &disk, false);
		for (int i = 0; i < 3; ++i)
			writer.write(plain + i * 4, 4);
	}

	uint8_t back[12] = {};
	disk.position = 0;
	{
		UGCProtection reader(42, &disk, false);
		for (int i = 0; i < 3; ++i)
			EXPECT_EQ(reader.read(back + i * 4, 4), 4);
	}
	EXPECT_EQ(0, memcmp(back, plain, 12));

	// one read over what two writes scrambled goes wrong in its second half
	disk.position = 0;
	UGCProtection(42, &disk, false).read(back, 8);
	EXPECT_EQ(0, memcmp(back, plain, 4));
	EXPECT_NE(0, memcmp(back + 4, plain + 4, 4));

	disk.position = 0;
	UGCProtection(43, &disk, false).read(back, 4);
	EXPECT_NE(0, memcmp(back, plain, 4));
}

TEST(UGCProtection, FailuresAndWhatIsForwarded)
{
	MemoryFile inner;
	UGCProtection stream(1, &inner, false);
	uint8_t buffer[4] = {7, 7, 7, 7};

	// empty and failed reads leave buffer and keystream alone
	EXPECT_EQ(stream.read(buffer, 4), 0);
	EXPECT_TRUE(stream.isEof());
	inner.failWith = -1;
	EXPECT_EQ(stream.read(buffer, 4), -1);
	EXPECT_EQ(buffer[0], 7);
	EXPECT_EQ(stream.getBlockCounter(), 0u);

	// a failed write still uses up its keystream
	EXPECT_EQ(stream.write(buffer, 4), -1);
	EXPECT_EQ(stream.getBlockCounter(), 1u);

	inner.data.assign(10, 0);
	inner.position = 3;
	EXPECT_FALSE(stream.seek(0));
	EXPECT_EQ(stream.tell(), 3);
	EXPECT_EQ(stream.getBlockCounter(), 1u);
	EXPECT_EQ(stream.getSize(), 10u);
	EXPECT_EQ(stream.getModificationTime(), 1234);
}

TEST(UGCProtection, DeletesTheInnerFileOnlyWhenOwned)
{
	bool destroyed = false;
	MemoryFile* inner = new MemoryFile();
	inner->destroyed = &destroyed;

	delete new UGCProtection(1, inner, false);
	EXPECT_FALSE(destroyed);
	delete new UGCProtection(1, inner, true);
	EXPECT_TRUE(destroyed);
}

TEST(UGCProtection, OnDiskBehindAPlainHeader)
{
	TemporaryDirectory dir;
	std::string path = dir / "level.vqm.shapes";
	const uint8_t header[4] = {5, 0, 200, 0};
	const uint8_t body[100] = {1, 2, 3};
	uint32_t count = 1;
	{
		NativeFile* file = new NativeFile();
		ASSERT_TRUE(file->open(path, FileModeWrite, true));
		file->write(header, 4);

		UGCProtection stream(200, file, true);
		EXPECT_FALSE(stream.isNative());
		EXPECT_EQ(stream.tell(), 4);
		stream.write(&count, 4);
		stream.write(body, sizeof(body));
		EXPECT_EQ(stream.getSize(), 108u);
	}

	NativeFile* file = new NativeFile();
	ASSERT_TRUE(file->open(path, FileModeRead, true));
	uint8_t headerBack[4];
	ASSERT_EQ(file->read(headerBack, 4), 4);
	EXPECT_EQ(0, memcmp(headerBack, header, 4));

	UGCProtection stream(headerBack[2], file, true);
	uint32_t countBack = 0;
	uint8_t bodyBack[100];
	EXPECT_EQ(stream.read(&countBack, 4), 4);
	EXPECT_EQ(stream.read(bodyBack, sizeof(bodyBack)), 100);
	EXPECT_EQ(countBack, count);
	EXPECT_EQ(0, memcmp(bodyBack, body, sizeof(body)));
}

TEST(UGCProtection, KeyIndexStaysInRange)
{
	EXPECT_EQ(keyIndexFromCounter(254), 255u);
	EXPECT_EQ(keyIndexFromCounter(255), 1u);
}

} // namespace vqm
