#include "Mutator.h"

#include <algorithm>
#include <cstring>

namespace {

const char* const kTokens[] = {"-1",
                               "2147483647",
                               "99999999999",
                               "9223372036854775808",
                               "nan",
                               "inf",
                               "1e400",
                               "0x1p3",
                               "\n",
                               "\r\n",
                               "\t",
                               "=",
                               " ",
                               "-",
                               ",",
                               "\"",
                               "\\",
                               "<",
                               "/>",
                               "&#0;",
                               "TimeAnimStep=",
                               "DataLoadGrammerBody=",
                               "DataSequence0=0\n",
                               "\xff\xfe",
                               "%s%n"};
constexpr unsigned kOddNumbers[] = {0,          1,          2,          0x7f,       0xff,       0x7fff,
                                    0xffff,     0x10000,    0x7fffffff, 0x80000000, 0xffffffff, 0x7f800000,
                                    0x7fc00000, 0x3f800000, 0x20000000, 0x15555556};

/// A number of one, two or four bytes, in either order of bytes, becomes another.
void ChangeNumber(std::string& bytes, size_t at, std::mt19937& random) {
    const size_t width = size_t(1) << random() % 3;
    if (at + width > bytes.size()) return;
    unsigned number = 0;
    std::memcpy(&number, &bytes[at], width);
    switch (random() % 3) {
    case 0:
        number = kOddNumbers[random() % (sizeof kOddNumbers / sizeof kOddNumbers[0])];
        break;
    case 1:
        number += unsigned(random() % 9) - 4u;
        break;
    default:
        number ^= 1u << (random() % 32);
    }
    std::memcpy(&bytes[at], &number, width);
    if (random() % 4 == 0) std::reverse(bytes.begin() + long(at), bytes.begin() + long(at + width));
}

/// Figures that stand there become other ones.
void ChangeFigures(std::string& bytes, size_t at, std::mt19937& random) {
    const size_t first = bytes.find_first_of("0123456789", at);
    if (first == std::string::npos) return;
    const size_t last = std::min(bytes.find_first_not_of("0123456789", first), bytes.size());
    const unsigned odd = kOddNumbers[random() % (sizeof kOddNumbers / sizeof kOddNumbers[0])];
    bytes.replace(first, last - first, std::to_string(random() % 2 ? odd : unsigned(random() % 20)));
}

} // namespace

void MutateOnce(std::string& bytes, std::mt19937& random) {
    const size_t at = bytes.empty() ? 0 : random() % bytes.size();
    switch (random() % 10) {
    case 0:
    case 1:
        if (!bytes.empty()) bytes[at] = char(random());
        break;
    case 2:
        if (random() % 4 == 0) bytes.resize(at);
        break;
    case 3:
        bytes.insert(at, kTokens[random() % (sizeof kTokens / sizeof kTokens[0])]);
        break;
    case 4:
        bytes.erase(at, random() % 20);
        break;
    case 5:
        bytes.insert(at, bytes.substr(at / 2, random() % 200));
        break;
    case 6:
        ChangeFigures(bytes, at, random);
        break;
    case 7:
        if (bytes.size() >= 8) { // where binary heads keep their count
            const auto count = unsigned(random() >> (random() % 32));
            std::memcpy(&bytes[4 * (random() % 2)], &count, 4);
        }
        break;
    default:
        ChangeNumber(bytes, at, random);
    }
}

std::string Splice(const std::string& first, const std::string& last, std::mt19937& random) {
    return first.substr(0, random() % (first.size() + 1)) + last.substr(random() % (last.size() + 1));
}
