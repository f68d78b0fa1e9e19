#include "svg/id_registry.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

#include "svg/node.h"

namespace quor {
namespace {

/// Distinct addresses that stand for nodes; never followed.
SvgNode* nodeAt(size_t index) {
    static std::vector<std::max_align_t> places(100000);
    return reinterpret_cast<SvgNode*>(&places.at(index));
}

SvgNode* find(const IdRegistry& registry, const std::string& id) {
    return registry.find(id.data(), id.size());
}

void expectToHoldAll(IdRegistry& registry, const std::vector<std::string>& ids) {
    ASSERT_TRUE(registry.initialize());
    for (size_t i = 0; i < ids.size(); ++i) {
        ASSERT_EQ(registry.insert(ids[i].c_str(), nodeAt(i)), Status::kOk) << ids[i];
    }
    for (size_t i = 0; i < ids.size(); ++i) ASSERT_EQ(find(registry, ids[i]), nodeAt(i)) << ids[i];
}

TEST(IdRegistry, FindsEveryIdAmongMany) {
    std::vector<std::string> ids = {"", "a", "b", "ab", "ba", "\xFF\x80", std::string(5000, 'x')};
    for (int i = 0; i < 60000; ++i) ids.push_back("id-" + std::to_string(i));
    IdRegistry registry;
    expectToHoldAll(registry, ids);
    for (const char* unknown : {"c", "id", "id-", "id-60000", "xxxxx"}) {
        EXPECT_EQ(find(registry, unknown), nullptr) << unknown;
    }
    EXPECT_EQ(registry.find("id-123", 5), find(registry, "id-12"));  // only the length counts

    registry.clear();
    for (const std::string& id : ids) ASSERT_EQ(find(registry, id), nullptr);
    ASSERT_EQ(registry.insert("a", nodeAt(7)), Status::kOk);
    EXPECT_EQ(find(registry, "a"), nodeAt(7));
}

TEST(IdRegistry, ALaterNodeReplacesAnEarlierOne) {
    IdRegistry registry;
    ASSERT_TRUE(registry.initialize());
    const std::string first = "same";
    const std::string second = "same";
    for (size_t i = 0; i < 1000; ++i) {  // one id does not fill the table
        ASSERT_EQ(registry.insert((i % 2 == 0 ? first : second).c_str(), nodeAt(i)), Status::kOk);
        ASSERT_EQ(find(registry, "same"), nodeAt(i));
    }
}

/// The CRC-32 of the registry's keys: linear, since it starts from zero.
uint32_t crcOf(const std::string& text) {
    uint32_t crc = 0;
    for (const char c : text) {
        crc ^= static_cast<uint8_t>(c);
        for (int bit = 0; bit < 8; ++bit) crc = (crc >> 1) ^ ((crc & 1) * 0xEDB88320U);
    }
    return crc;
}

/// 16 letters all of whose changes have the CRC 0: combinations of them with one id share its hash.
/// Found by elimination over the bits that keep a letter printable.
std::vector<std::string> changesWithoutTrace() {
    std::vector<std::string> changes;
    std::array<std::pair<uint32_t, std::string>, 32> basis;  // [i]: highest CRC bit is i
    for (size_t bit = 0; bit < 80; ++bit) {
        std::string change(16, '\0');
        change[bit / 5] = static_cast<char>(1 << bit % 5);
        uint32_t crc = crcOf(change);
        for (size_t i = 32; i-- > 0;) {
            if ((crc >> i & 1) == 0) continue;
            if (basis[i].first == 0) {
                basis[i] = {crc, change};
                break;
            }
            crc ^= basis[i].first;
            for (size_t k = 0; k < 16; ++k) {
                change[k] = static_cast<char>(change[k] ^ basis[i].second[k]);
            }
        }
        if (crc == 0) changes.push_back(change);
    }
    return changes;
}

TEST(IdRegistry, IdsOfOneHashNeitherEatTheMemoryNorTheTime) {
    const std::vector<std::string> changes = changesWithoutTrace();
    ASSERT_GE(changes.size(), 16U);
    for (const size_t count : {size_t{9}, size_t{40000}}) {
        std::vector<std::string> ids;
        for (size_t i = 0; i < count; ++i) {
            std::string id(16, '@');
            for (size_t k = 0; k < 16; ++k) {
                for (size_t n = 0; n < 16; ++n) {
                    if (i >> n & 1) id[k] = static_cast<char>(id[k] ^ changes[n][k]);
                }
            }
            ASSERT_EQ(crcOf(id), crcOf(std::string(16, '@')));
            ids.push_back(id);
        }
        IdRegistry registry;
        expectToHoldAll(registry, ids);
        EXPECT_EQ(find(registry, "unknown"), nullptr);
    }
}

}  // namespace
}  // namespace quor
