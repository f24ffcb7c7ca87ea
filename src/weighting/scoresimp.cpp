#include <tree/scores.h>

#include <tree/host.h>

#include <cstddef>
#include <limits>
#include <new>
#include <numeric>

namespace tree_800 {

Scores::~Scores() = default;

ScoresImp::ScoresImp() = default;

ScoresImp::~ScoresImp() = default;

Scores* ScoresImp::Clone() const { return new ScoresImp(*this); }

int ScoresImp::GetNumClasses() const { return static_cast<int>(scores_.size()); }

ScoreType ScoresImp::GetType() const { return type_; }

double ScoresImp::Get(int i) const {
    return 0 <= i && i < GetNumClasses() ? scores_[static_cast<std::size_t>(i)]
                                         : systemMissingValue();
}

bool ScoresImp::Set(ScoreType type) {
    if (type != DefaultScores) {
        return false;
    }
    SetDefault();
    return true;
}

bool ScoresImp::Set(int i, double score) {
    if (i < 0) {
        return false;
    }
    if (i == std::numeric_limits<int>::max()) {
        throw std::bad_alloc();  // i + 1 scores could not be counted
    }
    auto const index = static_cast<std::size_t>(i);
    if (index >= scores_.size()) {
        scores_.resize(index + 1);
    }
    scores_[index] = score;
    type_ = UserScores;
    return true;
}

void ScoresImp::SetDefault() {
    std::iota(scores_.begin(), scores_.end(), 0.0);
    type_ = DefaultScores;
}

void ScoresImp::Resize(int n) { scores_.resize(static_cast<std::size_t>(n)); }

}  // namespace tree_800
