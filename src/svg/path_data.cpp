// Reads path data: a tokenizer of commands and numbers, driven by tables of character classes and
// of what each command letter appends.

#include "svg/path_data.h"

#include <array>
#include <cmath>

#include "base/finite.h"
#include "svg/number.h"

namespace quor {
namespace {

/// A number ends when it has this many characters.
constexpr int kMaxNumberLength = 62;

/// A cubic's; an arc has one less.
constexpr int kMaxCoordinates = 6;

enum CharacterClass : uint8_t { kCommand = 1, kNumber = 2, kSeparator = 4 };

constexpr std::array<uint8_t, 256> kCharacterClasses = [] {
    std::array<uint8_t, 256> classes{};
    const auto add = [&classes](const char* members, uint8_t membership) {
        for (; *members != '\0'; ++members) {
            classes[static_cast<unsigned char>(*members)] |= membership;
        }
    };
    add("+-MmZzLlHhVvCcSsQqTtAaFfPp", kCommand);
    add(".Ee0123456789", kNumber);
    add(" ,\t\n\r", kSeparator);
    return classes;
}();

constexpr bool isIn(char c, uint8_t classes) noexcept {
    return (kCharacterClasses[static_cast<unsigned char>(c)] & classes) != 0;
}
constexpr bool isSign(char c) noexcept { return c == '+' || c == '-'; }
constexpr bool isCommandLetter(char c) noexcept { return isIn(c, kCommand) && !isSign(c); }

/// Codes of absolute segments; a relative one is the next higher.
enum SegmentCode : uint8_t {
    kClosePath = 0,
    kMoveTo = 2,
    kLineTo = 4,
    kHorizontalTo = 6,
    kVerticalTo = 8,
    kQuadTo = 10,
    kCubicTo = 12,
    kSmoothQuadTo = 14,
    kSmoothCubicTo = 16,
    kSmallCounterClockwiseArc = 18,  // small clockwise 20, large 22 and 24
};

/// What a command letter appends.
struct CommandRule {
    enum Form : uint8_t { kNothing, kSegment, kArc };
    Form form = kNothing;
    uint8_t code = 0;
    uint8_t coordinates = 0;
};

/// Of a segment, by its absolute code.
constexpr int coordinatesOf(uint8_t code) noexcept {
    constexpr uint8_t kCounts[] = {0, 2, 2, 1, 1, 4, 6, 2, 4, 5, 5, 5, 5};
    return kCounts[code / 2];
}

constexpr std::array<CommandRule, 256> kCommandRules = [] {
    std::array<CommandRule, 256> rules{};
    const auto add = [&rules](unsigned char upper, CommandRule::Form form, uint8_t code,
                              uint8_t coordinates) {
        rules[upper] = {form, code, coordinates};
        const auto relative = static_cast<uint8_t>(code == kClosePath ? code : code + 1);
        rules[static_cast<unsigned char>(upper | 0x20)] = {form, relative, coordinates};
    };
    add('Z', CommandRule::kSegment, kClosePath, 0);
    add('M', CommandRule::kSegment, kMoveTo, 2);
    add('L', CommandRule::kSegment, kLineTo, 2);
    add('H', CommandRule::kSegment, kHorizontalTo, 1);
    add('V', CommandRule::kSegment, kVerticalTo, 1);
    add('Q', CommandRule::kSegment, kQuadTo, 4);
    add('C', CommandRule::kSegment, kCubicTo, 6);
    add('T', CommandRule::kSegment, kSmoothQuadTo, 2);
    add('S', CommandRule::kSegment, kSmoothCubicTo, 4);
    add('A', CommandRule::kArc, kSmallCounterClockwiseArc, 5);
    return rules;
}();

/// Cuts path data into commands and numbers. A number without a letter repeats the command
/// before it.
class PathTokenizer {
public:
    explicit PathTokenizer(const char* text) noexcept : at_(text) {}

    /// The letter in force; 0 before the first.
    char command() const noexcept { return command_; }

    /// Moves to the next command or repetition and reads its first number, which is 0 where none
    /// follows. False at the end of what can be read.
    bool nextCommand(float& number) noexcept {
        if (!skipToToken()) return false;
        if (!isCommandLetter(*at_)) {
            number = repetition();
            return true;
        }
        command_ = *at_++;
        skipSeparators();
        number = scanNumber();
        return true;
    }

    /// A further number of the running segment. A letter in its place is taken as the next
    /// command and leaves 0, as the end of the data does.
    float nextCoordinate() noexcept {
        if (!skipToToken()) return 0.0F;
        if (!isCommandLetter(*at_)) return repetition();
        command_ = *at_++;
        return 0.0F;
    }

    /// An arc flag is one character and needs no separator after it. False when it is neither
    /// 0 nor 1.
    bool nextFlag(bool& flag) noexcept {
        skipSeparators();
        const char* first = at_;
        while (isSign(*at_)) ++at_;
        if (!isIn(*at_, kNumber)) return false;
        const double value = decimalValue(first, ++at_);
        flag = value != 0.0;
        return value >= 0.0 && value <= 1.0;
    }

private:
    void skipSeparators() noexcept {
        while (isIn(*at_, kSeparator)) ++at_;
    }

    bool skipToToken() noexcept {
        skipSeparators();
        return isIn(*at_, kCommand | kNumber);
    }

    /// What follows a pair of a move is a line.
    float repetition() noexcept {
        if (command_ == 'M') command_ = 'L';
        if (command_ == 'm') command_ = 'l';
        return scanNumber();
    }

    /// 0 where no number begins, and nothing consumed.
    float scanNumber() noexcept { return scanFloat(at_, kMaxNumberLength); }

    const char* at_;
    char command_ = 0;
};

/// Where a path is after its segments so far, found out only when somebody asks: each segment is
/// looked at once, however often that is.
class CurrentPoint {
public:
    struct Position {
        float x = 0.0F;
        float y = 0.0F;
    };

    Position after(const PathData& data) noexcept {
        for (; segment_ < data.segments.count(); ++segment_) advance(data);
        return current_;
    }

private:
    void advance(const PathData& data) noexcept {
        const uint8_t segment = data.segments[segment_];
        const auto code = static_cast<uint8_t>(segment & ~1);
        if (code == kClosePath) {
            current_ = start_;
            return;
        }
        const Position origin = (segment & 1) != 0 ? current_ : Position{};
        const float* const values = data.coordinates.data() + coordinate_;
        const int count = coordinatesOf(code);
        if (code == kHorizontalTo) {
            current_.x = origin.x + values[0];
        } else if (code == kVerticalTo) {
            current_.y = origin.y + values[0];
        } else {
            current_ = {origin.x + values[count - 2], origin.y + values[count - 1]};
        }
        if (code == kMoveTo) start_ = current_;
        coordinate_ += count;
    }

    Position start_;  ///< of the subpath
    Position current_;
    int segment_ = 0;
    int coordinate_ = 0;
};

/// Appends what the commands say; the arrays have room for a whole segment.
class PathReader {
public:
    PathReader(const char* text, PathData& data) noexcept : tokenizer_(text), data_(data) {}

    /// False when memory runs out.
    bool read() noexcept {
        float first = 0.0F;
        while (tokenizer_.nextCommand(first)) {
            if (!data_.segments.reserveMore(1)) return false;
            if (!data_.coordinates.reserveMore(kMaxCoordinates)) return false;
            const CommandRule& rule =
                kCommandRules[static_cast<unsigned char>(tokenizer_.command())];
            if (rule.form == CommandRule::kSegment) addSegment(rule, first);
            if (rule.form == CommandRule::kArc && !addArc(rule, first)) break;
        }
        return true;
    }

private:
    void addSegment(const CommandRule& rule, float first) noexcept {
        const auto code = static_cast<uint8_t>(rule.code & ~1);
        if (code == kSmoothQuadTo && isAfter(kCubicTo, kSmoothCubicTo)) {
            startWithControl(kQuadTo, (rule.code & 1) != 0);
        } else if (code == kSmoothCubicTo && isAfter(kQuadTo, kSmoothQuadTo)) {
            startWithControl(kCubicTo, (rule.code & 1) != 0);
        } else {
            data_.segments.pushReserved(rule.code);
        }
        if (rule.coordinates == 0) return;
        data_.coordinates.pushReserved(first);
        for (int i = 1; i < rule.coordinates; ++i) addCoordinate();
    }

    bool isAfter(SegmentCode curve, SegmentCode smoothCurve) const noexcept {
        if (data_.segments.isEmpty()) return false;
        const auto last = static_cast<uint8_t>(data_.segments.last() & ~1);
        return last == curve || last == smoothCurve;
    }

    /// A smooth segment takes its first control point from a curve of its own degree and else from
    /// the current point. The engine's smooth segments reflect the control point of either curve,
    /// so that after one of the other degree the control point has to be spelled out.
    void startWithControl(SegmentCode code, bool isRelative) noexcept {
        const CurrentPoint::Position control =
            isRelative ? CurrentPoint::Position{} : current_.after(data_);
        data_.segments.pushReserved(static_cast<uint8_t>(isRelative ? code + 1 : code));
        data_.coordinates.pushReserved(base::finite(control.x));
        data_.coordinates.pushReserved(base::finite(control.y));
    }

    void addCoordinate() noexcept { data_.coordinates.pushReserved(tokenizer_.nextCoordinate()); }

    /// Appends nothing and returns false when a flag is bad.
    bool addArc(const CommandRule& rule, float firstRadius) noexcept {
        const float secondRadius = tokenizer_.nextCoordinate();
        const float rotation = tokenizer_.nextCoordinate();
        bool isLarge = false;
        bool isSweep = false;
        if (!tokenizer_.nextFlag(isLarge) || !tokenizer_.nextFlag(isSweep)) return false;
        const int variant = (isLarge ? 4 : 0) + (isSweep ? 0 : 2);
        data_.segments.pushReserved(static_cast<uint8_t>(rule.code + variant));
        data_.coordinates.pushReserved(std::fabs(firstRadius));
        data_.coordinates.pushReserved(std::fabs(secondRadius));
        data_.coordinates.pushReserved(rotation);
        addCoordinate();
        addCoordinate();
        return true;
    }

    PathTokenizer tokenizer_;
    PathData& data_;
    CurrentPoint current_;
};

}  // namespace

Status parsePathData(const char* text, PathData& data) noexcept {
    data.segments.clear();
    data.coordinates.clear();
    if (PathReader(text, data).read()) return Status::kOk;
    data.segments.clearFailure();
    data.coordinates.clearFailure();
    return Status::kOutOfMemory;
}

}  // namespace quor
