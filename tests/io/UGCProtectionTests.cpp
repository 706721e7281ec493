#include "io/NativeFile.h"
#include "io/UGCProtection.h"

#include "TemporaryDirectory.h"
#include "TestDoubles.h"

#include <gtest/gtest.h>

#include <string.h>

#include <memory>

namespace vqm
{

TEST(UGCProtection, WritesConsumeOneBlockPerStartedSixtyFourBytes)
{
	MemoryFile inner;
	UGCProtection stream(5, &inner, false);
	uint8_t bytes[65] = {};

	EXPECT_EQ(stream.write(bytes, 0), 0);
	EXPECT_EQ(stream.getBlockCounter(), 0u);
	// an empty write still reaches the inner file
	ASSERT_EQ(inner.writes.size(), 1u);
	EXPECT_EQ(inner.writes[0], 0u);

	EXPECT_EQ(stream.write(bytes, 64), 64);
	EXPECT_EQ(stream.getBlockCounter(), 1u);
	EXPECT_EQ(stream.write(bytes, 65), 65);
	EXPECT_EQ(stream.getBlockCounter(), 3u);
	EXPECT_EQ(stream.write(bytes, 1), 1);
	EXPECT_EQ(stream.getBlockCounter(), 4u);

	EXPECT_EQ(inner.data.size(), 130u);
}

TEST(UGCProtection, ScramblesWithoutTouchingTheCallersBuffer)
{
	MemoryFile inner;
	UGCProtection stream(9, &inner, false);

	uint8_t plain[16];
	for (int i = 0; i < 16; ++i)
		plain[i] = uint8_t(i);
	uint8_t copy[16];
	memcpy(copy, plain, 16);

	stream.write(plain, 16);
	EXPECT_EQ(0, memcmp(plain, copy, 16));
	EXPECT_NE(0, memcmp(inner.data.data(), plain, 16));
}

TEST(UGCProtection, ReadBackNeedsTheSameKeyAndCallSizes)
{
	MemoryFile disk;
	const uint8_t plain[12] = {'s', 'h', 'a', 'p', 'e', ' ', 'b', 'l', 'o', 'b', '!', '?'};
	{
		UGCProtection writer(42, &disk, false);
		writer.write(plain, 4);
		writer.write(plain + 4, 4);
		writer.write(plain + 8, 4);
	}

	uint8_t back[12] = {};
	disk.position = 0;
	{
		UGCProtection reader(42, &disk, false);
		EXPECT_EQ(reader.read(back, 4), 4);
		EXPECT_EQ(reader.read(back + 4, 4), 4);
		EXPECT_EQ(reader.read(back + 8, 4), 4);
	}
	EXPECT_EQ(0, memcmp(back, plain, 12));

	// one read over what two writes scrambled goes wrong in its second half
	disk.position = 0;
	{
		UGCProtection reader(42, &disk, false);
		EXPECT_EQ(reader.read(back, 8), 8);
	}
	EXPECT_EQ(0, memcmp(back, plain, 4));
	EXPECT_NE(0, memcmp(back + 4, plain + 4, 4));

	disk.position = 0;
	{
		UGCProtection reader(43, &disk, false);
		reader.read(back, 4);
	}
	EXPECT_NE(0, memcmp(back, plain, 4));
}

TEST(UGCProtection, FailedReadsLeaveBufferAndKeystreamAlone)
{
	MemoryFile inner;
	UGCProtection stream(1, &inner, false);
	uint8_t buffer[4] = {7, 7, 7, 7};

	// at the end
	EXPECT_EQ(stream.read(buffer, 4), 0);
	inner.failWith = -1;
	EXPECT_EQ(stream.read(buffer, 4), -1);
	EXPECT_EQ(buffer[0], 7);
	EXPECT_EQ(stream.getBlockCounter(), 0u);

	// a failed write still uses up its keystream
	EXPECT_EQ(stream.write(buffer, 4), -1);
	EXPECT_EQ(stream.getBlockCounter(), 1u);
}

TEST(UGCProtection, SeekIsRefusedAndTheRestForwarded)
{
	MemoryFile inner;
	inner.data.assign(10, 0);
	inner.position = 3;
	UGCProtection stream(1, &inner, false);

	EXPECT_FALSE(stream.seek(0));
	EXPECT_EQ(stream.tell(), 3);
	EXPECT_EQ(stream.getSize(), 10u);
	EXPECT_EQ(stream.getModificationTime(), 1234);
	EXPECT_TRUE(stream.isOpen());
	EXPECT_FALSE(stream.isNative());

	uint8_t buffer[16];
	stream.read(buffer, 16);
	EXPECT_TRUE(stream.isEof());
	EXPECT_EQ(stream.getBlockCounter(), 1u);
	EXPECT_FALSE(stream.seek(0));
	EXPECT_EQ(stream.tell(), 10);
	EXPECT_EQ(stream.getBlockCounter(), 1u);
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
	const uint32_t keyIndex = 200;
	const uint8_t header[4] = {5, 0, uint8_t(keyIndex), 0};
	const uint8_t body[100] = {1, 2, 3};
	uint32_t count = 1;

	{
		NativeFile* file = new NativeFile();
		ASSERT_TRUE(file->open(path, FileModeWrite, true));
		file->write(header, 4);

		UGCProtection stream(keyIndex, file, true);
		EXPECT_FALSE(stream.isNative());
		EXPECT_EQ(stream.tell(), 4);
		EXPECT_EQ(stream.getSize(), 4u);
		stream.write(&count, 4);
		stream.write(body, sizeof(body));
		EXPECT_EQ(stream.tell(), 108);
	}

	NativeFile* file = new NativeFile();
	ASSERT_TRUE(file->open(path, FileModeRead, true));
	EXPECT_EQ(file->getSize(), 108u);

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
	EXPECT_EQ(stream.read(bodyBack, 1), 0);
	EXPECT_TRUE(stream.isEof());
}

TEST(UGCProtection, KeyIndexStaysInRange)
{
	EXPECT_EQ(getMaxKeyIndex(), 255u);
	EXPECT_EQ(keyIndexFromCounter(0), 1u);
	EXPECT_EQ(keyIndexFromCounter(254), 255u);
	EXPECT_EQ(keyIndexFromCounter(255), 1u);
	EXPECT_EQ(keyIndexFromCounter(0xffffffffu), 1u);
	EXPECT_EQ(keyIndexFromCounter(0xfffffffeu), 255u);

	uint32_t index = chooseKeyIndex();
	EXPECT_GE(index, 1u);
	EXPECT_LE(index, 255u);
}

} // namespace vqm
