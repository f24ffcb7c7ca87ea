#ifndef TREE800_NODE_IMP_H
#define TREE800_NODE_IMP_H

#include <tree/export.h>
#include <tree/inline_vector.h>
#include <tree/node.h>
#include <tree/predictor.h>

#include <memory>
#include <vector>

namespace tree_800 {

class ClsInfoImp;
class RegInfoImp;
class SplitRuleImp;

/// The node that growers build trees of. A node owns its children and so its whole subtree, its
/// rules and its information: deleting the root deletes the tree. The parent link is not owned.
///
/// A pointer given to a setter belongs to the node from then on. The setters that size a list
/// (SetNumChildren, SetNumCompetitors, SetNumSurrogates) forget what the list held WITHOUT deleting
/// it. To make a node a leaf again, as pruning does, call RemoveChildren, which deletes the
/// surrogates too, set each competitor to null, and call SetNumCompetitors(0).
///
/// No operation recurses over the depth of the tree. Any number of threads may read one tree and
/// route through it at a time, as long as every rule of a caller's own kind allows it; a change of
/// any of its nodes needs the whole tree alone.
///
///     auto root = std::make_unique<NodeImp>();
///     root->SetNumCompetitors(1);
///     root->SetCompetitor(0, rule.release());
///     root->SetNumChildren(2);
///     root->SetChild(0, left.release());
///     root->SetChild(1, right.release());
class TREE800_EXPORT NodeImp : public Node {
public:
    /// A leaf without parent, rules, information or predictor summaries; id 0, classification.
    NodeImp();
    NodeImp(NodeImp const&) = delete;
    /// Makes this node a deep copy of the other, which may be an ancestor or a descendant. The
    /// parent stays: the node keeps its place in its tree. Information that does not match the
    /// classification flag, or is of a caller's own kind, is left out. On a throw nothing changes.
    NodeImp& operator=(NodeImp const& other);
    ~NodeImp() override;

    /// A new node assigned from this one, without a parent; the caller deletes it.
    [[nodiscard]] NodeImp* Clone() const;

    // Node
    Node* GetParent() const override;
    int GetNumChildren() const override;
    Node* GetChild(unsigned int pos) const override;
    unsigned int GetNumCompetitors() const override;
    int GetBiggestChildPos() const override;
    [[nodiscard]] SplitRule* GetCompetitor(unsigned int pos) const override;
    unsigned int GetNumSurrogates() const override;
    [[nodiscard]] SplitRule* GetSurrogate(unsigned int pos) const override;
    unsigned int GetId() const override;
    double GetAssignment() const override;
    double GetNodeSize(DataSample sample) const override;
    double GetUnweightedNodeSize(DataSample sample) const override;
    double GetPercentageNodeSize(DataSample sample) const override;
    unsigned int GetNumPredictors() const override;
    bool GetPredictorRange(int index, double* low, double* high) const override;
    bool GetNumPredictorValues(int index, int* n) const override;
    bool GetPredictorValues(int index, double* out, int n) const override;
    bool GetPredictorMissingValueFlag(int index, bool* hasMissing) const override;
    ClsInfo* GetClsInfo(DataSample sample) const override;
    RegInfo* GetRegInfo(DataSample sample) const override;

    /// Deletes every child with its subtree and every surrogate, and answers true: the node is a
    /// leaf again. The argument is ignored; the primary split and the competitors stay.
    virtual bool RemoveChildren(bool ignored);

    /// One step of routing: the child position for the observation, or -1. obs[i] is the value of
    /// predictor i, and covers the predictor index of every rule at the node. A missing one is
    /// given as the rules know it: OSplitRule::GetMissingValue, which is the system-missing value
    /// unless the variable has a code of its own. Any other marker is read as a number. The primary
    /// split is asked first, then the surrogates in order; when none places the observation the
    /// answer is the primary split's dumb child, which may be -1. The position is the rule's own
    /// answer and may lie beyond the children. A leaf, and a node without a primary split, answers
    /// -1; empty child slots make a node no leaf, so that a grower can size the children first and
    /// route its cases before it makes them. Allocates nothing.
    virtual int Classify(double const* obs) const;

    /// The kind of information that the assignment and the sizes are read from; true for a new
    /// node, then as the latest SetClsInfo, SetRegInfo or SetClassificationNode says.
    virtual bool IsClassificationNode() const;

    /// Routes the observation from here. Without a stop node: the node at which the walk ends, a
    /// leaf or an inner node that cannot place the observation or answers a position without a
    /// child. With one: the stop node if the walk passes it, this node included, otherwise null.
    /// Borrowed. Allocates nothing and always ends.
    NodeImp const* DropObservationThroughTree(double const* obs, NodeImp const* stop) const;

    /// Compares two subtrees in this order: children, parents (only when this node has one),
    /// primary split and competitors, surrogates, id, classification flag, information, predictor
    /// summaries. Rules compare by SplitRuleImp's operator==, which ignores their mappings: trees
    /// that split at different values can be equal, and SplitRuleImp::Compare, rule by rule, tells
    /// them apart. Information is compared only where THIS node has it, so that a == b and b == a
    /// may differ. Parents take part: nodes are equal only if the
    /// trees around them are. A pair already under comparison counts as equal. A root equals its
    /// clone, unless it holds a NaN, which equals nothing, or what a copy leaves out.
    bool operator==(NodeImp const& other) const;

    /// Deletes children, surrogates, information and rules. The id, the classification flag, the
    /// parent link and the predictor summaries stay.
    void Clean();

    /// Makes n empty slots (below 0 counts as 0). Children present are forgotten, not deleted.
    void SetNumChildren(int n);
    /// Takes ownership of the child and becomes its parent. pos must be below GetNumChildren() and
    /// child a non-null NodeImp in no other slot; a child present is forgotten, not deleted.
    void SetChild(unsigned int pos, Node* child);
    /// Writes the child at the position, which may be null, to *out; false, *out untouched, when
    /// pos is outside [0, GetNumChildren()). Borrowed. @{
    bool Child(int pos, NodeImp const** out) const;
    bool Child(int pos, NodeImp** out);
    /// @}
    /// The child at pos, pos below GetNumChildren(); borrowed, may be null.
    NodeImp* GetChildImp(unsigned int pos) const;
    /// Deletes the child and closes the gap; nothing happens outside [0, GetNumChildren()). Rules
    /// are not renumbered.
    void RemoveChild(int pos);
    /// Moves child i to position newPos[i] and renumbers the primary split and the surrogates to
    /// match; competitors are not renumbered. newPos must be a permutation of the positions.
    void ReorderSiblings(std::vector<int> const& newPos);

    /// Makes n empty slots. Rules present are forgotten, not deleted. @{
    void SetNumCompetitors(unsigned int n);
    void SetNumSurrogates(unsigned int n);
    /// @}
    /// Deletes the rule at pos and takes ownership of the new one, which may be null. pos must be
    /// below the number of slots. @{
    void SetCompetitor(unsigned int pos, SplitRuleImp* rule);
    void SetSurrogate(unsigned int pos, SplitRuleImp* rule);
    /// @}
    /// The rule itself, pos below the number of slots; borrowed, may be null. @{
    SplitRuleImp* GetCompetitorImp(unsigned int pos) const;
    SplitRuleImp* GetSurrogateImp(unsigned int pos) const;
    /// @}
    /// The first position among primary split and competitors whose rule is on the predictor; -1
    /// for none.
    int FindCompetitorPos(int predictorIndex) const;

    /// Replaces the sample's information, taking ownership of info, which may be null, and deletes
    /// the information of the other kind for both samples. The classification flag follows, also
    /// when info is null. @{
    void SetClsInfo(ClsInfo* info, DataSample sample);
    void SetRegInfo(RegInfo* info, DataSample sample);
    /// @}
    /// The information as the class that growers fill; null when there is none or it is of a
    /// caller's own kind. Borrowed. @{
    ClsInfoImp* GetClsInfoImp(DataSample sample) const;
    RegInfoImp* GetRegInfoImp(DataSample sample) const;
    /// @}
    /// Sets the flag alone; the information stays.
    void SetClassificationNode(bool isClassification);

    /// Any number: routing does not read it, comparison does.
    void SetId(unsigned int id);

    /// Keeps the first n summaries and fills up with new ones.
    void SetNumPredictors(unsigned int n);
    /// Sets the summary of one predictor as PredictorImp does; index in [0, GetNumPredictors()). @{
    void SetPredictorRange(int index, double low, double high);
    void SetNumPredictorValues(int index, int n);
    void SetPredictorValues(int index, double const* in, int n);
    void SetPredictorMissingValueFlag(int index, bool hasMissing);
    /// @}

private:
    using Children = InlineVector<std::unique_ptr<NodeImp>, 2>;

    static void DeleteSubtree(std::unique_ptr<NodeImp> root) noexcept;
    void ReleaseInformationAndRules() noexcept;
    void CopyAllButChildren(NodeImp const& other);
    bool EqualsApartFromRelatives(NodeImp const& other) const;
    PredictorImp const* FindPredictor(int index) const;
    PredictorImp& Predictor(int index);

    Children children_;
    NodeImp* parent_ = nullptr;
    InlineVector<std::unique_ptr<SplitRuleImp>, 1> competitors_;
    std::vector<std::unique_ptr<SplitRuleImp>> surrogates_;
    unsigned int id_ = 0;
    bool isClassification_ = true;
    std::unique_ptr<RegInfo> regInfo_[2];  // training, test
    std::unique_ptr<ClsInfo> clsInfo_[2];
    std::vector<PredictorImp> predictors_;
};

}  // namespace tree_800

#endif
