#include "io/UGCProtection.h"

#include "io/KeyTable.h"
#include "io/Salsa20.h"

#include <string.h>
#include <time.h>

#include <new>

namespace vqm
{

uint32_t getMaxKeyIndex()
{
	return 255;
}

uint32_t keyIndexFromCounter(uint32_t counter)
{
	uint32_t index = counter % getMaxKeyIndex() + 1;
	return index < 1 ? 1 : (index > getMaxKeyIndex() ? getMaxKeyIndex() : index);
}

uint32_t chooseKeyIndex()
{
	timespec now = {};
	clock_gettime(CLOCK_MONOTONIC, &now);

	uint64_t ticks = uint64_t(now.tv_sec) * 1000000000ull + uint64_t(now.tv_nsec);
	return keyIndexFromCounter(uint32_t(ticks));
}

UGCProtection::UGCProtection(uint32_t keyIndex, File* inner_, bool ownsInner_)
    : inner(inner_)
    , ownsInner(ownsInner_)
    , cipherState(new (std::nothrow) uint32_t[16])
{
	if (cipherState)
	{
		memcpy(cipherState, kKeyTable[keyIndex % kKeyTableSize], 16 * sizeof(uint32_t));
		salsa20SetCounter(cipherState, 0);
	}
}

UGCProtection::~UGCProtection()
{
	if (ownsInner && inner)
		delete inner;

	delete[] cipherState;
}

bool UGCProtection::isOpen() const
{
	return inner && cipherState && inner->isOpen();
}

bool UGCProtection::refusesCopy() const
{
	return inner && inner->refusesCopy();
}

int32_t UGCProtection::read(void* buffer, uint32_t size)
{
	if (!inner || !cipherState)
		return -1;

	uint8_t* scrambled = new (std::nothrow) uint8_t[size];
	if (!scrambled && size > 0)
		return -1;

	int32_t count = inner->read(scrambled, size);

	// nothing read leaves the buffer and the keystream alone
	if (count > 0)
		salsa20ApplyKeystream(cipherState, scrambled, uint32_t(count), static_cast<uint8_t*>(buffer));

	delete[] scrambled;
	return count;
}

int32_t UGCProtection::write(const void* buffer, uint32_t size)
{
	if (!inner || !cipherState)
		return -1;

	uint8_t* scrambled = new (std::nothrow) uint8_t[size];
	if (!scrambled && size > 0)
		return -1;

	// the keystream is used up even if the write below fails
	salsa20ApplyKeystream(cipherState, static_cast<const uint8_t*>(buffer), size, scrambled);

	int32_t count = inner->write(scrambled, size);

	delete[] scrambled;
	return count;
}

bool UGCProtection::seek(int64_t)
{
	return false;
}

int64_t UGCProtection::tell() const
{
	return inner ? inner->tell() : -1;
}

uint64_t UGCProtection::getSize() const
{
	return inner ? inner->getSize() : ~uint64_t(0);
}

bool UGCProtection::isEof() const
{
	return inner && inner->isEof();
}

int64_t UGCProtection::getModificationTime() const
{
	return inner ? inner->getModificationTime() : 0;
}

bool UGCProtection::isSpecial() const
{
	return inner && inner->isSpecial();
}

uint64_t UGCProtection::getBlockCounter() const
{
	return cipherState ? salsa20GetCounter(cipherState) : 0;
}

} // namespace vqm
