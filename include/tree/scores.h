#ifndef TREE800_SCORES_H
#define TREE800_SCORES_H

#include <tree/export.h>

#include <vector>

namespace tree_800 {

/// Where the scores of an ordinal target come from.
enum ScoreType : int {
    DefaultScores = 0,  ///< the score of class i is i
    UserScores = 1      ///< set by every successful Set of a score
};

/// One number for each class of an ordinal target, any number at all. Created by settings and
/// callers; the settings that hold them delete them. Any number of threads may read one object at a
/// time; a change needs it alone.
///
///     ScoresImp scores;
///     scores.Set(2, 7.5);  // 0, 0, 7.5
class TREE800_EXPORT Scores {
public:
    virtual ~Scores();

    /// A deep copy; the caller deletes it.
    [[nodiscard]] virtual Scores* Clone() const = 0;

    /// Number of scores held.
    virtual int GetNumClasses() const = 0;
    /// UserScores as soon as one score has been set.
    virtual ScoreType GetType() const = 0;
    /// The score of class i; the system-missing value outside [0, GetNumClasses()).
    virtual double Get(int i) const = 0;
    /// Accepts DefaultScores alone, and gives every class its default score.
    virtual bool Set(ScoreType type) = 0;
    /// Sets the score of class i, any value, filling up with 0.0 as far as needed, and makes the
    /// type UserScores. False, with nothing changed, for a negative index. Throws std::bad_alloc,
    /// with nothing changed, for more scores than an int can count.
    virtual bool Set(int i, double score) = 0;
};

/// The scores. A new object has none and the type DefaultScores.
class TREE800_EXPORT ScoresImp : public Scores {
public:
    ScoresImp();
    ~ScoresImp() override;

    // Scores
    [[nodiscard]] Scores* Clone() const override;
    int GetNumClasses() const override;
    ScoreType GetType() const override;
    double Get(int i) const override;
    bool Set(ScoreType type) override;
    bool Set(int i, double score) override;

    /// Gives every class its default score.
    void SetDefault();
    /// Makes the scores n; new ones are 0.0, not their default. The type stays. A negative n throws
    /// std::length_error with nothing changed.
    void Resize(int n);

private:
    std::vector<double> scores_;
    ScoreType type_ = DefaultScores;
};

}  // namespace tree_800

#endif
