// validateUTF8String, splitPathIntoSegments and containsDotSegments against plain reference
// implementations of their documented behaviour. The first byte picks the function.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

#include "fuzz/FuzzSupport.h"
#include "iri/grammar/Unicode.h"
#include "iri/path/PathSegments.h"

namespace {

using namespace foundation::network::iri::detail;

// --- validateUTF8String ---------------------------------------------------------------------

// Strict UTF-8 (RFC 3629): no overlong forms, no surrogates, nothing above U+10FFFF.
bool isStrictUtf8(const std::string& bytes) {
    std::size_t i = 0;
    while (i < bytes.size()) {
        const auto lead = static_cast<unsigned char>(bytes[i]);
        std::size_t length = 0;
        std::uint32_t value = 0;
        std::uint32_t minimum = 0;
        if (lead < 0x80) {
            ++i;
            continue;
        }
        if ((lead & 0xE0) == 0xC0) {
            length = 2, value = lead & 0x1F, minimum = 0x80;
        } else if ((lead & 0xF0) == 0xE0) {
            length = 3, value = lead & 0x0F, minimum = 0x800;
        } else if ((lead & 0xF8) == 0xF0) {
            length = 4, value = lead & 0x07, minimum = 0x10000;
        } else {
            return false;
        }
        if (i + length > bytes.size()) {
            return false;
        }
        for (std::size_t k = 1; k < length; ++k) {
            const auto next = static_cast<unsigned char>(bytes[i + k]);
            if ((next & 0xC0) != 0x80) {
                return false;
            }
            value = value << 6 | (next & 0x3F);
        }
        if (value < minimum || value > 0x10FFFF || (value >= 0xD800 && value <= 0xDFFF)) {
            return false;
        }
        i += length;
    }
    return true;
}

// The repair: sequences of 1 to 6 bytes that are complete by their lead byte are copied; any
// other byte becomes an upper-case "%XX".
std::string repair(const std::string& bytes) {
    std::string out;
    std::size_t i = 0;
    while (i < bytes.size()) {
        const auto lead = static_cast<unsigned char>(bytes[i]);
        std::size_t length = 0;
        if (lead < 0x80) {
            length = 1;
        } else {
            for (unsigned mask = 0x40, n = 2; n <= 6; mask >>= 1, ++n) {
                if ((lead & mask) == 0) {
                    break;
                }
                if ((lead & (mask >> 1)) == 0) {
                    length = n;
                    break;
                }
            }
        }
        bool complete = length != 0 && i + length <= bytes.size();
        for (std::size_t k = 1; complete && k < length; ++k) {
            complete = (static_cast<unsigned char>(bytes[i + k]) & 0xC0) == 0x80;
        }
        if (complete) {
            out.append(bytes, i, length);
            i += length;
        } else {
            char escape[4];
            std::snprintf(escape, sizeof escape, "%%%02X", lead);
            out += escape;
            ++i;
        }
    }
    return out;
}

void checkValidate(const std::string& bytes) {
    const Utf8Check result = validateUTF8String(bytes);
    if (isStrictUtf8(bytes)) {
        FNFUZZ_CHECK(!result.repaired);
    }
    if (result.repaired) {
        FNFUZZ_CHECK(result.bytes == repair(bytes));
    } else {
        // Accepted input is whole sequences, so the repair leaves it as it is.
        FNFUZZ_CHECK(result.bytes == bytes);
        FNFUZZ_CHECK(repair(bytes) == bytes);
    }
}

// --- splitPathIntoSegments ------------------------------------------------------------------

// A leading "//" followed by a segment stays one element; otherwise a bare first segment, then
// one element per "/" holding it and the segment after it (empty segments give "/" alone).
std::vector<std::u16string> referenceSplit(const std::u16string& path) {
    std::vector<std::u16string> out;
    std::size_t i = 0;
    auto segmentEnd = [&](std::size_t from) {
        const std::size_t slash = path.find(u'/', from);
        return slash == std::u16string::npos ? path.size() : slash;
    };
    if (path.compare(0, 2, u"//") == 0 && path.size() > 2 && path[2] != u'/') {
        i = segmentEnd(2);
        out.push_back(path.substr(0, i));
    } else if (path[0] != u'/') {
        i = segmentEnd(0);
        out.push_back(path.substr(0, i));
    }
    while (i < path.size()) {
        const std::size_t end = segmentEnd(i + 1);
        out.push_back(path.substr(i, end - i));
        i = end;
    }
    return out;
}

void checkSplit(const std::u16string& path) {
    std::vector<std::u16string> segments = {u"left over"};
    const bool split = splitPathIntoSegments(path, segments);
    if (path.empty()) {
        FNFUZZ_CHECK(!split && segments.size() == 1 && segments[0] == u"left over");
        return;
    }
    FNFUZZ_CHECK(split);
    FNFUZZ_CHECK(segments == referenceSplit(path));
}

// --- containsDotSegments --------------------------------------------------------------------

// Any "." or ".." segment, except the kept blind spot: in a path of three or more characters
// ending "/./", that last "." is not seen.
bool referenceDotSegments(const std::u16string& path) {
    std::size_t end = path.size();
    if (path.size() >= 3 && path.compare(path.size() - 3, 3, u"/./") == 0) {
        end = path.size() - 2;
    }
    std::size_t start = 0;
    while (start <= end) {
        std::size_t slash = path.find(u'/', start);
        if (slash == std::u16string::npos || slash > end) {
            slash = end;
        }
        const std::u16string segment = path.substr(start, slash - start);
        if (segment == u"." || segment == u"..") {
            return true;
        }
        start = slash + 1;
    }
    return false;
}

void checkDotSegments(const std::u16string& path) {
    FNFUZZ_CHECK(containsDotSegments(path) == referenceDotSegments(path));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) {
        return 0;
    }
    const std::string bytes(reinterpret_cast<const char*>(data + 1), size - 1);
    switch (data[0] % 3) {
        case 0:
            checkValidate(bytes);
            break;
        case 1:
            checkSplit(fnfuzz::toUtf16(bytes));
            break;
        default:
            checkDotSegments(fnfuzz::toUtf16(bytes));
            break;
    }
    return 0;
}
