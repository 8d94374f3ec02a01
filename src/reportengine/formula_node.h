#pragma once
// The tree a formula is read into, shared by the evaluator and the
// translation into SQL. Runs of one kind of operator ("a + b - c", "a or b
// or c") are one node with many operands, so that a long formula makes a
// wide tree, not a deep one.

#include "reportengine/formula.h"

#include <vector>

namespace reportengine {

enum class NodeKind {
    Literal,     // value
    Field,       // field
    FormulaRef,  // name
    Not,         // operands[0]
    Negate,      // operands[0]
    Chain,       // operands joined by ops (or, and, &, + -, * /)
    Compare,     // operands[0] ops[0] operands[1]
    In,          // operands[0] in [operands[1..]]
    If,          // if operands[0] then operands[1] else operands[2] (null when absent)
    Call,        // name(operands...)
};

enum class Op { Or, And, Concat, Add, Subtract, Multiply, Divide, Equal, NotEqual, Less, Greater, LessEqual, GreaterEqual };

struct FormulaNode {
    NodeKind kind = NodeKind::Literal;
    int position = 0;  // where it starts in the text
    Value value;
    FieldName field;
    QString name;  // formula or function name; functions in lower case
    std::vector<std::unique_ptr<FormulaNode>> operands;
    std::vector<Op> ops;
};

}  // namespace reportengine
