#include "image/files.h"
#include "platform/image/lzw_encoder.h"

#include <stdexcept>

namespace veldara::test {

namespace {

// A decoder straight from the description of the code, for strips that are right.
Bytes decoded(const Bytes& code) {
    std::vector<Bytes> strings;
    const auto clear = [&] {
        strings.assign(258, {});
        for (unsigned i = 0; i < 256; ++i) {
            strings[i] = {static_cast<std::uint8_t>(i)};
        }
    };
    clear();
    Bytes result;
    Bytes previous;
    unsigned width = 9;
    std::size_t at = 0;
    const auto next = [&] {
        unsigned value = 0;
        for (unsigned i = 0; i < width; ++i, ++at) {
            value = value << 1 | (code.at(at / 8) >> (7 - at % 8) & 1U);
        }
        return value;
    };
    EXPECT_EQ(next(), 256U) << "a strip starts with the clear code";
    while (true) {
        const unsigned value = next();
        if (value == 257) {
            break;
        }
        if (value == 256) {
            clear();
            width = 9;
            previous.clear();
            continue;
        }
        Bytes string;
        if (value < strings.size()) {
            string = strings[value];
        } else {
            EXPECT_EQ(value, strings.size());
            string = previous;
            string.push_back(previous.at(0));
        }
        append(result, string);
        if (!previous.empty()) {
            previous.push_back(string.at(0));
            strings.push_back(previous);
        }
        previous = string;
        // One code earlier than needed: the decoder's table is one string behind the encoder's.
        const std::size_t known = strings.size() + 1;
        width = known < 512 ? 9 : known < 1024 ? 10 : known < 2048 ? 11 : 12;
    }
    EXPECT_EQ((at + 7) / 8, code.size()) << "nothing follows the end code";
    return result;
}

void expectComesBack(LzwEncoder& encoder, const Bytes& strip) {
    Bytes code = {1, 2, 3}; // what is there already stays
    encoder.encode(strip, code);
    ASSERT_EQ(code[2], 3);
    code.erase(code.begin(), code.begin() + 3);
    ASSERT_EQ(decoded(code), strip) << strip.size() << " bytes";
}

} // namespace

TEST(Lzw, NoiseOfEveryLengthAroundTheWidthsAndTheFullTable) {
    LzwEncoder encoder;
    const Bytes bytes = noise(9000);
    // Noise gives about a code a byte: wider codes from 254, 766 and 1790 on, a new table at 3836.
    for (const auto& [first, end] :
         {std::pair{0, 300}, {740, 800}, {1760, 1850}, {3780, 4120}, {8000, 8030}}) {
        for (std::ptrdiff_t size = first; size < end; ++size) {
            ASSERT_NO_FATAL_FAILURE(
                expectComesBack(encoder, Bytes(bytes.begin(), bytes.begin() + size)));
        }
    }
}

TEST(Lzw, EvenAreasOfEveryLength) {
    LzwEncoder encoder;
    for (std::size_t size = 0; size < 3000; size += 7) {
        ASSERT_NO_FATAL_FAILURE(expectComesBack(encoder, Bytes(size, 77)));
    }
    ASSERT_NO_FATAL_FAILURE(expectComesBack(encoder, Bytes(3'000'000, 0)));
}

TEST(Lzw, SomeOfBoth) {
    LzwEncoder encoder;
    Bytes bytes;
    for (unsigned i = 1; i <= 200; ++i) {
        append(bytes, Bytes(i * 13 % 101, static_cast<std::uint8_t>(i)));
        append(bytes, noise(i * 29 % 97, i));
        ASSERT_NO_FATAL_FAILURE(expectComesBack(encoder, bytes));
    }
}

} // namespace veldara::test
