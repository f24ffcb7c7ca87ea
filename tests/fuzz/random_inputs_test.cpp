#include "fuzz/input.h"
#include "support/random.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <vector>

namespace tree_800::fuzz {
namespace {

constexpr int MaxLength = 2000;

// Drives with every input of the corpus, then with some random ones.
void ExpectAgreement(char const* corpus, int numRandomInputs, void (*drive)(Input& input)) {
    auto const run = [drive](std::vector<std::uint8_t> const& bytes) {
        Input input(bytes.data(), bytes.size());
        EXPECT_NO_THROW(drive(input));
    };
    std::filesystem::path const directory(TREE800_FUZZ_CORPUS_DIR);
    for (auto const& entry : std::filesystem::directory_iterator(directory / corpus)) {
        SCOPED_TRACE(entry.path());
        std::ifstream file(entry.path(), std::ios::binary);
        run({std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()});
    }
    test::Random random;
    for (int round = 0; round < numRandomInputs && !testing::Test::HasFailure(); ++round) {
        std::vector<std::uint8_t> bytes(static_cast<std::size_t>(random.Between(1, MaxLength)));
        for (std::uint8_t& byte : bytes) {
            byte = static_cast<std::uint8_t>(random.Between(0, 255));
        }
        run(bytes);
    }
}

TEST(RandomInputs, SplitRulesAgreeWithTheirTwins) {
    ExpectAgreement("split_rule", 100, DriveSplitRules);
}
TEST(RandomInputs, RoutingAgreesWithItsTwin) { ExpectAgreement("routing", 400, DriveRouting); }
TEST(RandomInputs, SettingsAgreeWithTheirTwins) { ExpectAgreement("settings", 100, DriveSettings); }

}  // namespace
}  // namespace tree_800::fuzz
