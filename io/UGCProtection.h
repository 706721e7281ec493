// A File decorator that scrambles what is written through it and unscrambles what is read
// through it with Salsa20/20. Scrambling and unscrambling are the same operation, so a reader
// gets the data back by reading through a decorator of the same key index, in calls of
// exactly the sizes the writer used: every call starts a fresh keystream block.
#pragma once

#include "io/File.h"

namespace vqm
{

// Highest key index; 0 stands for a stream without scrambling and gets no decorator.
uint32_t getMaxKeyIndex();

// A key index from 1 to getMaxKeyIndex() made from a varying counter value.
uint32_t keyIndexFromCounter(uint32_t counter);
// A fresh key index from the high-resolution clock: it differs from run to run.
uint32_t chooseKeyIndex();

class UGCProtection : public File
{
public:
	// keyIndex picks the key table entry (taken modulo the table size); the block counter
	// starts at 0. With ownsInner, deleting the decorator deletes inner.
	UGCProtection(uint32_t keyIndex, File* inner, bool ownsInner);
	~UGCProtection() override;

	UGCProtection(const UGCProtection&) = delete;
	UGCProtection& operator=(const UGCProtection&) = delete;

	bool isOpen() const override;
	bool refusesCopy() const override;

	int32_t read(void* buffer, uint32_t size) override;
	int32_t write(const void* buffer, uint32_t size) override;
	// the stream only goes forward: always false, nothing moves
	bool seek(int64_t position) override;
	int64_t tell() const override;
	uint64_t getSize() const override;
	bool isEof() const override;
	int64_t getModificationTime() const override;
	bool isSpecial() const override;

	// keystream blocks used so far
	uint64_t getBlockCounter() const;

private:
	File* inner;
	bool ownsInner;
	uint32_t* cipherState; // 16 words
};

} // namespace vqm
