#ifndef TREE800_TESTS_FUZZ_INPUT_H
#define TREE800_TESTS_FUZZ_INPUT_H

#include <tree/host.h>

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <limits>
#include <stdexcept>
#include <string>

/// What the drivers draw their inputs with, and how they report.
namespace tree_800::fuzz {

/// Ends the run when the statement does not hold.
inline void Check(bool holds, char const* statement, char const* file = __builtin_FILE(),
                  int line = __builtin_LINE()) {
    if (!holds) {
        throw std::logic_error(std::string(file) + ':' + std::to_string(line) +
                               ": does not hold: " + statement);
    }
}

inline bool Same(double a, double b) { return a == b || (std::isnan(a) && std::isnan(b)); }

/// A sequence of bytes read as choices, zeros once it is used up. Borrows the bytes.
class Input {
public:
    Input(std::uint8_t const* bytes, std::size_t size) : next_(bytes), end_(bytes + size) {}

    bool IsUsedUp() const { return next_ == end_; }
    /// A whole number from low to high, both included and no more than 255 apart.
    int Draw(int low, int high) { return low + Byte() % (high - low + 1); }
    bool Flag() { return Draw(0, 1) == 1; }
    /// A position in a range of that size, which is above 0.
    std::size_t Index(std::size_t size) { return Byte() % size; }
    template <typename Range>
    auto& Pick(Range& range) {
        return *(std::begin(range) + static_cast<std::ptrdiff_t>(Index(std::size(range))));
    }
    /// Any double, most often one that others meet again: small halves, their neighbours, and the
    /// values that are special somewhere.
    double Number() {
        constexpr double Infinity = std::numeric_limits<double>::infinity();
        static double const special[] = {std::nan(""),  Infinity,     -Infinity,    -0.0,
                                         1e-12,         1.0 - 1e-12,  2147483647.0, 2147483648.0,
                                         -2147483649.0, 4294967296.0, 1e308,        100.0};
        switch (Draw(0, 7)) {
            case 0:
                return Pick(special);
            case 1:
                return systemMissingValue();
            case 2:
                return std::nextafter(0.5 * Draw(-4, 24), Flag() ? Infinity : -Infinity);
            case 3:
                return AnyNumber();
            default:
                return 0.5 * Draw(-4, 24);
        }
    }

private:
    std::uint8_t Byte() { return IsUsedUp() ? std::uint8_t{0} : *next_++; }
    double AnyNumber() {
        std::uint8_t bytes[sizeof(double)];
        for (std::uint8_t& byte : bytes) {
            byte = Byte();
        }
        double number = 0.0;
        std::memcpy(&number, bytes, sizeof number);
        return number;
    }

    std::uint8_t const* next_;
    std::uint8_t const* end_;
};

/// Does one of the operations, each as likely as another.
template <typename... Operations>
void DoOneOf(Input& input, Operations... operations) {
    int pos = input.Draw(0, static_cast<int>(sizeof...(operations)) - 1);
    ((pos-- == 0 ? operations() : void()), ...);
}

/// A driver leads objects and their plain twins through the operations that the input chooses, and
/// checks after each that they answer alike. @{
void DriveSplitRules(Input& input);
void DriveRouting(Input& input);
void DriveSettings(Input& input);
/// @}

}  // namespace tree_800::fuzz

#endif
