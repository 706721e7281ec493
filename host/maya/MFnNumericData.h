// Kinds of numbers a numeric attribute can hold.
#pragma once

class MFnNumericData {
public:
    enum Type {
        kInvalid = 0,
        kBoolean,
        kByte,
        kChar,
        kShort,
        k2Short,
        k3Short,
        kLong,
        kInt = kLong,
        k2Long,
        k2Int = k2Long,
        k3Long,
        k3Int = k3Long,
        kInt64,
        kFloat,
        k2Float,
        k3Float,
        kDouble,
        k2Double,
        k3Double,
        k4Double,
        kAddr,
        kLast
    };
};
