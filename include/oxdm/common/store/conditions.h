#pragma once
// The conditions face: lists of stored conditions (xc_cond_def) behind a
// short handle. A cursor given a handle (oxioCursor::AttachCondition)
// evaluates the list itself while it walks its table, so that rows which
// fail are never delivered.
//
// A list reads left to right with no grouping: the connector of a record
// joins it to everything before it, so "A or B and C" is (A or B) and C.
// Records are fixed-layout and exchanged byte for byte.

#include <cstddef>

#pragma pack(push, 1)

// One side of a comparison.
struct xc_operand_def {
    short kind;           // 0: XC_OPERAND_FIELD (2) when the side is a field
    short table;          // 2: table number
    char field[26];       // 4: field name
    char reserved0[2];
    char appl[4];         // 32: first two letters of the dictionary name
    char letter[2];       // 36: third letter of the dictionary name, one byte
    short file_code;      // 38
    short field_num;      // 40: field number, then 2 reserved bytes
    char reserved1[2];
    short type;           // 44: field type of the field's definition
    char reserved2[2];
};

struct xc_cond_def {
    xc_operand_def left;   // 0
    xc_operand_def right;  // 48: a field, or only its type set for a constant
    char value[52];        // 96: the constant: double, date record, time record or text
    char text[52];         // 148: the constant as display text (a text constant in double quotes)
    short op;              // 200: XC_EQUAL ... XC_NOT_EQUAL
    short connector;       // 202: XC_AND or XC_OR, to the condition before
    char reserved[6];
};

struct xc_init_def {
    short task;   // 0
    short file;   // 2: file number
    short table;  // 4
    char reserved[444];
};

#pragma pack(pop)

static_assert(sizeof(xc_operand_def) == 48);
static_assert(offsetof(xc_operand_def, table) == 2);
static_assert(offsetof(xc_operand_def, field) == 4);
static_assert(offsetof(xc_operand_def, appl) == 32);
static_assert(offsetof(xc_operand_def, letter) == 36);
static_assert(offsetof(xc_operand_def, file_code) == 38);
static_assert(offsetof(xc_operand_def, field_num) == 40);
static_assert(offsetof(xc_operand_def, type) == 44);
static_assert(sizeof(xc_cond_def) == 210);
static_assert(offsetof(xc_cond_def, right) == 48);
static_assert(offsetof(xc_cond_def, value) == 96);
static_assert(offsetof(xc_cond_def, text) == 148);
static_assert(offsetof(xc_cond_def, op) == 200);
static_assert(offsetof(xc_cond_def, connector) == 202);
static_assert(sizeof(xc_init_def) == 450);

enum : short { XC_OPERAND_FIELD = 2 };
// Comparison operators. XC_GREATER is evaluated but never produced by the
// condition builders, which ask for "not less or equal" instead.
enum : short { XC_EQUAL = 1, XC_GREATER_EQUAL = 2, XC_LESS_EQUAL = 3, XC_GREATER = 4, XC_LESS = 5, XC_NOT_EQUAL = 6 };
enum : short { XC_AND = 1, XC_OR = 2 };

// A new empty list; answers its handle (> 0), or 0 when no more lists can
// be had. REQUIRES: init is not null.
short xc_init_conditions(xc_init_def* init, bool keep);
// Appends a copy of *cond. Raw status: 0, or IO_VOID for an unknown handle.
// REQUIRES: cond is not null.
short xc_put_condition(short handle, xc_cond_def* cond);
// Copies the next record of the list into *cond; answers 1 while there was
// one, 0 at the end of the list or for an unknown handle.
// REQUIRES: cond is not null.
short xc_get_condition(short handle, xc_cond_def* cond);
// Makes xc_get_condition start again from the first record.
short xc_reset_conditions(short handle);
// Ends a handle and frees its list.
short xc_term_conditions(short handle, bool all);
