// The items of which a snapshot file's head and each particle's record consist.
//
// A head item is as many lines of text or times four bytes as the table says, a record item as many columns
// of text or times four bytes. Binary numbers are little-endian and packed. Codes that aren't listed count
// nothing.
#pragma once

enum GrammerHeadCode { HEAD_TIME = 0, HEAD_NUMBER = 1, HEAD_DUMMY = 2, HEAD_DUMMY3 = 3, HEAD_DUMMY10 = 4 };

enum GrammerBodyCode {
    BODY_XYZ = 0,
    BODY_VXYZ = 1,
    BODY_DUMMY = 2,
    BODY_DUMMY3 = 3,
    BODY_DUMMY10 = 4,
    BODY_RADIUS = 5,
    BODY_ID = 6,
    BODY_TYPE = 7,
    BODY_VALUE1 = 8
};

struct GrammarItem_st {
    const char* mName;
    const char* mInsert; ///< in the menu that inserts it
    const char* mType;
    int mWords; ///< of four bytes each
};

inline bool IsHeadDummy(int code) { return code >= HEAD_DUMMY && code <= HEAD_DUMMY10; }
inline bool IsBodyDummy(int code) { return code >= BODY_DUMMY && code <= BODY_DUMMY10; }

/// What is passed over, in heads and records alike.
inline constexpr GrammarItem_st kDummyItems[] = {
    {"Dummy", "Dummy", "float", 1},
    {"Dummy*3", "Dummy*3", "float*3", 3},
    {"Dummy*10", "Dummy*10", "float*10", 10},
};

/// By code.
inline constexpr GrammarItem_st kHeadItems[] = {
    {"Time", "Time", "float", 1},
    {"Number", "Number", "integer", 1},
    kDummyItems[0],
    kDummyItems[1],
    kDummyItems[2],
};

/// By code. "Raius" is how the menu spells it.
inline constexpr GrammarItem_st kBodyItems[] = {
    {"x y z", "XYZ", "float*3", 3},
    {"Vx Vy Vz", "VxVyVz", "float*3", 3},
    kDummyItems[0],
    kDummyItems[1],
    kDummyItems[2],
    {"Radius", "Raius", "float", 1},
    {"ID", "ID", "integer", 1},
    {"Type", "Type", "integer[0-3]", 1},
    {"Value1", "Value1", "float", 1},
};

constexpr int kHeadCodes = sizeof kHeadItems / sizeof kHeadItems[0];
constexpr int kBodyCodes = sizeof kBodyItems / sizeof kBodyItems[0];
