#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <array>
#include <cstring>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "embedded/platform/Allocation.h"
#include "propdata/VeltPropData.h"
#include "tests/support/AllocationSpy.h"

namespace velt::tests {
namespace {

using Bytes = std::array<unsigned char, 16>;

constexpr Bytes noZero = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16};

CLSID classOf(const Bytes& bytes) {
  CLSID clsid;
  std::memcpy(&clsid, bytes.data(), sizeof clsid);
  return clsid;
}

// The key as it is explained: the bytes of the class id and the variant's low byte, up to the first zero byte.
std::string expectedKey(const Bytes& bytes, int variant) {
  std::string key;
  for (const unsigned char byte : bytes) {
    if (byte == 0) return key;
    key += static_cast<char>(byte);
  }
  const auto low = static_cast<unsigned char>(variant & 0xFF);
  if (low != 0) key += static_cast<char>(low);
  return key;
}

TEST(CLSIDMemString, EndsInTheVariantsByte) {
  const CLSIDMemString usual(classOf(noZero), -1);
  EXPECT_EQ(usual.length(), 17u);
  EXPECT_EQ(usual.str(), std::string(noZero.begin(), noZero.end()) + "\xFF");
  const CLSIDMemString other(classOf(noZero), 1);
  EXPECT_EQ(other.length(), 17u);
  EXPECT_EQ(other.str(), std::string(noZero.begin(), noZero.end()) + "\x01");
  EXPECT_LT(other, usual);
}

TEST(CLSIDMemString, HoldsTheBytesInMemoryOrder) {
  const CLSID clsid{0x44332211, 0x6655, 0x8877, {0x99, 0xAA, 0xBB, 0xCC, 0xDD, 0xEE, 0xF1, 0xF2}};
  EXPECT_EQ(CLSIDMemString(clsid, 3).str(),
            "\x11\x22\x33\x44\x55\x66\x77\x88\x99\xAA\xBB\xCC\xDD\xEE\xF1\xF2\x03");
}

TEST(CLSIDMemString, KeepsTheLowByteOfTheVariantOnly) {
  const CLSID clsid = classOf(noZero);
  EXPECT_EQ(CLSIDMemString(clsid, 0x101), CLSIDMemString(clsid, 1));
  EXPECT_EQ(CLSIDMemString(clsid, 255), CLSIDMemString(clsid, -1));
  EXPECT_EQ(CLSIDMemString(clsid, -255), CLSIDMemString(clsid, 1));
  EXPECT_EQ(CLSIDMemString(clsid, 256).length(), 16u);
}

TEST(CLSIDMemString, AVariantOfZeroAddsNothing) {
  EXPECT_EQ(CLSIDMemString(classOf(noZero), 0).str(), std::string(noZero.begin(), noZero.end()));
}

TEST(CLSIDMemString, Quirk_key_cut_at_zero_byte) {
  for (std::size_t zero = 0; zero < 16; ++zero) {
    Bytes first = noZero;
    first[zero] = 0;
    Bytes second = first;
    for (std::size_t i = zero + 1; i < 16; ++i)
      second[i] = 0x77;
    const CLSIDMemString key(classOf(first), -1);
    EXPECT_EQ(key.str(), std::string(noZero.begin(), noZero.begin() + static_cast<std::ptrdiff_t>(zero)));
    EXPECT_EQ(key, CLSIDMemString(classOf(first), 1)) << "the variant is no part of it";
    EXPECT_EQ(key, CLSIDMemString(classOf(second), -1)) << "nor is what follows the zero byte";
  }
  EXPECT_TRUE(CLSIDMemString(GUID_NULL, -1).empty());
  EXPECT_TRUE(CLSIDMemString(GUID_NULL, 5).empty());
}

RC_GTEST_PROP(CLSIDMemString, IsTheBytesUpToTheFirstZero, (int variant)) {
  Bytes bytes{};
  for (unsigned char& byte : bytes)
    byte = *rc::gen::inRange<unsigned char>(0, 12);
  RC_ASSERT(CLSIDMemString(classOf(bytes), variant).str() == expectedKey(bytes, variant));
}

RC_GTEST_PROP(CLSIDMemString, OrdersAsItsBytesDo, ()) {
  const auto some = [] {
    Bytes bytes = noZero;
    for (std::size_t i = 13; i < 16; ++i)
      bytes[i] = *rc::gen::elementOf(std::vector<unsigned char>{0, 1, 0x7F, 0x80, 0xFF});
    return bytes;
  };
  const Bytes a = some();
  const Bytes b = some();
  const int variantA = *rc::gen::elementOf(std::vector<int>{-1, 0, 1, 0x7F, 0x80});
  const int variantB = *rc::gen::elementOf(std::vector<int>{-1, 0, 1, 0x7F, 0x80});
  const auto unsignedKey = [](const Bytes& bytes, int variant) {
    const std::string key = expectedKey(bytes, variant);
    return std::vector<unsigned char>(key.begin(), key.end());
  };
  const bool isLess = unsignedKey(a, variantA) < unsignedKey(b, variantB);
  RC_ASSERT((CLSIDMemString(classOf(a), variantA) < CLSIDMemString(classOf(b), variantB)) == isLess);
}

TEST(CLSIDMemString, AShorterKeySortsBeforeALongerOneThatBeginsWithIt) {
  Bytes cut = noZero;
  cut[15] = 0;
  EXPECT_LT(CLSIDMemString(classOf(cut), -1), CLSIDMemString(classOf(noZero), 0));
  EXPECT_LT(CLSIDMemString(classOf(noZero), 0), CLSIDMemString(classOf(noZero), 1));
}

TEST(CLSIDMemString, CopiesAndMovesAsAString) {
  const CLSIDMemString key(classOf(noZero), -1);
  const AllocationSpy spy;
  CLSIDMemString copied(key);
  const CLSIDMemString moved(std::move(copied));
  EXPECT_EQ(spy.allocations(), 0u);
  EXPECT_EQ(moved, key);
  EXPECT_EQ(moved.length(), 17u);
  EXPECT_TRUE((std::is_base_of_v<CStdStr<char>, CLSIDMemString>));
}

TEST(CLSIDMemString, EveryAutomationClassHasAKeyOfItsOwn) {
  std::map<CLSIDMemString, std::string> names;
  int keysSeen = 0;
#define VELT_CLSID(name, ...)                                                                \
  for (const int variant : {-1, 0, 1}) {                                                     \
    const auto [known, isNew] = names.emplace(CLSIDMemString(CLSID_##name, variant), #name); \
    EXPECT_TRUE(isNew) << #name << " shares a list with " << known->second;                  \
  }                                                                                          \
  ++keysSeen;
#define VELT_IID(name, ...)
#include "host/automation/Ids.inc"
  EXPECT_GT(keysSeen, 40);
}

TEST(PropertyListCache, KeepsItsNodesOnTheHostsHeap) {
  PropertyListCache cache;
  const auto heap = platform::AllocationFault::countOnly(platform::Heap::Host);
  cache[CLSIDMemString(classOf(noZero), -1)] = TqVector<PROPINFO>();
  EXPECT_EQ(heap.allocations(), 1u);
  cache[CLSIDMemString(classOf(noZero), 1)] = TqVector<PROPINFO>();
  EXPECT_EQ(heap.allocations(), 2u);
  EXPECT_EQ(cache.begin()->first, CLSIDMemString(classOf(noZero), 1));
}

}  // namespace
}  // namespace velt::tests
