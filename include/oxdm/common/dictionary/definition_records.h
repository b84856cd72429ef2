#pragma once
// The fixed-layout definition records of the flat record face. They are
// exchanged with callers byte for byte: every offset that a caller reads is
// checked below with static_assert. Bytes between the named fields are
// reserved: a compiled dictionary leaves them zero and callers copy them
// whole. Text fields are zero-terminated within their width.
//
// xio_file_def and xio_key_def hold shorts at odd offsets and are packed to
// single-byte alignment: read and write their members by value, never bind a
// reference or pointer to one (a test macro or std::max binds references;
// copy the member first). The other records have their natural layout.
//
// Numbering: tables are numbered from 1 in dictionary order; fields are
// numbered from 1 across the whole dictionary, table after table (a table's
// fields are first_field .. first_field + field_count - 1); keys are numbered
// from 1 across the whole dictionary and each names the table it serves.

#include <cstddef>

// Argument of xio_open_dictionary.
struct xio_open_dict_def {
    char name[256];     // dictionary name ("ord") or path of its source file
    short mode;         // open mode; callers set 1
    short file;         // the file number, filled in on success
};

#pragma pack(push, 1)
// What xio_get_def gives: the file as a whole.
struct xio_file_def {
    char reserved0[23];
    short tables;        // 23: number of tables
    short keys;          // 25: number of keys
    char reserved1[2];
    char appl_abbr[14];  // 29: application abbreviation
    char letter;         // 43: the file's letter
    short file_code;     // 44: the file code
    char reserved2[82];
};
#pragma pack(pop)

// What xio_get_rec_def gives: one table.
struct xio_rec_def {
    char description[60];  // 0: the table's description
    short audit_mode;      // 60: 1 for a table that is audited
    char reserved0[12];
    short custom_fields;   // 74: non-zero when the table takes custom fields
    short first_field;     // 76: number of the table's first field
    short field_count;     // 78: number of fields of the table
    char reserved1[2];
    short stored_records;  // 82: below 1 with custom fields: no record of its own
    char reserved2[2];
};

// Field types (xio_fld_def::type).
enum : short {
    XIO_ALPHA = 0,
    XIO_NUMERIC = 1,
    XIO_BOOLEAN = 2,
    XIO_DATE = 3,
    XIO_TIME = 4,
    XIO_PHONE = 5,
    XIO_SSNUM = 6,
    XIO_CHOICE = 7,   // 7, 8 and 9 are all choice fields
    XIO_CHOICE8 = 8,
    XIO_CHOICE9 = 9,
};

// What xio_get_fld_def gives: one field.
struct xio_fld_def {
    char name[8];              // 0: field name, the column name
    char description[26];      // 8: display description, may hold %code.section markup
    short type;                // 34: XIO_ALPHA ... XIO_CHOICE9
    unsigned short length;     // 36: storage length
    char reserved0[4];
    short key;                 // 42: non-zero when part of the table's own key
    short code;                // 44: field code, 0 when none
    short formatted;           // 46: non-zero when the code's section format applies
    unsigned short section;    // 48: section number of the field code
    char reserved1[8];
    unsigned short label_break;     // 58: where a column heading is broken
    unsigned short default_width;   // 60: display width in characters
    unsigned short min_head_width;  // 62: least width of a column heading
    char reserved2[2];
    short hidden;              // 66: zero when the field is visible
    char reserved3[2];
    short protect;             // 70: non-zero for a protected (read-only) field
    char reserved4[4];
    short required;            // 76: non-zero when an entry is required
    char reserved5[2];
    short multi_line;          // 80: greater than 0 for a long memo field
    short right_justify;       // 82: alpha fields
    short capitalize;          // 84: greater than 0 to capitalise entry
    char reserved6[2];
    short has_choices;         // 88: greater than 0 when values come from a custom list
    short operator_stamp;      // 90: the field holding the last writer's operator id
    short decimal;             // 92: decimal places
    char reserved7[2];
    short is_signed;           // 96: zero for an unsigned numeric field
    char reserved8[4];
    short commas;              // 102: non-zero to show thousands separators
    short zero_shown;          // 104: non-zero to show a numeric zero, not blank
    char reserved9[4];
    short month_year;          // 110: date holding month and year only
    short first_stamp;         // 112: the date stamp
    char reserved10[2];
    short second_stamp;        // 116: the time stamp
    short items;               // 118: number of items of a choice field
    short default_value;       // 120: default of a choice or numeric field, 0 none
    char reserved11[2];
    short help;                // 124: non-zero when the field has a help id of its own
    char reserved12[4];
};

// What xio_get_key_def gives: one key (an index other than a table's own).
enum { XIO_KEY_MAX_FIELDS = 23 };
#pragma pack(push, 1)
struct xio_key_def {
    char reserved0[51];
    short fields[XIO_KEY_MAX_FIELDS];  // 51: field numbers, in key order
    short table;                       // 97: the table the key serves
    short field_count;                 // 99: number of fields in the key
};
#pragma pack(pop)

// Sizes of the item buffers of xio_get_item_alpha, terminator included.
enum { XIO_ITEM_CODE_SIZE = 9, XIO_ITEM_TEXT_SIZE = 81 };

static_assert(sizeof(xio_open_dict_def) == 260);
static_assert(offsetof(xio_open_dict_def, mode) == 256);
static_assert(offsetof(xio_open_dict_def, file) == 258);

static_assert(sizeof(xio_file_def) == 128);
static_assert(offsetof(xio_file_def, tables) == 23);
static_assert(offsetof(xio_file_def, keys) == 25);
static_assert(offsetof(xio_file_def, appl_abbr) == 29);
static_assert(offsetof(xio_file_def, letter) == 43);
static_assert(offsetof(xio_file_def, file_code) == 44);

static_assert(sizeof(xio_rec_def) == 86);
static_assert(offsetof(xio_rec_def, audit_mode) == 60);
static_assert(offsetof(xio_rec_def, custom_fields) == 74);
static_assert(offsetof(xio_rec_def, first_field) == 76);
static_assert(offsetof(xio_rec_def, field_count) == 78);
static_assert(offsetof(xio_rec_def, stored_records) == 82);

static_assert(sizeof(xio_fld_def) == 130);
static_assert(offsetof(xio_fld_def, description) == 8);
static_assert(offsetof(xio_fld_def, type) == 34);
static_assert(offsetof(xio_fld_def, length) == 36);
static_assert(offsetof(xio_fld_def, key) == 42);
static_assert(offsetof(xio_fld_def, code) == 44);
static_assert(offsetof(xio_fld_def, formatted) == 46);
static_assert(offsetof(xio_fld_def, section) == 48);
static_assert(offsetof(xio_fld_def, label_break) == 58);
static_assert(offsetof(xio_fld_def, default_width) == 60);
static_assert(offsetof(xio_fld_def, min_head_width) == 62);
static_assert(offsetof(xio_fld_def, hidden) == 66);
static_assert(offsetof(xio_fld_def, protect) == 70);
static_assert(offsetof(xio_fld_def, required) == 76);
static_assert(offsetof(xio_fld_def, multi_line) == 80);
static_assert(offsetof(xio_fld_def, right_justify) == 82);
static_assert(offsetof(xio_fld_def, capitalize) == 84);
static_assert(offsetof(xio_fld_def, has_choices) == 88);
static_assert(offsetof(xio_fld_def, operator_stamp) == 90);
static_assert(offsetof(xio_fld_def, decimal) == 92);
static_assert(offsetof(xio_fld_def, is_signed) == 96);
static_assert(offsetof(xio_fld_def, commas) == 102);
static_assert(offsetof(xio_fld_def, zero_shown) == 104);
static_assert(offsetof(xio_fld_def, month_year) == 110);
static_assert(offsetof(xio_fld_def, first_stamp) == 112);
static_assert(offsetof(xio_fld_def, second_stamp) == 116);
static_assert(offsetof(xio_fld_def, items) == 118);
static_assert(offsetof(xio_fld_def, default_value) == 120);
static_assert(offsetof(xio_fld_def, help) == 124);

static_assert(sizeof(xio_key_def) == 101);
static_assert(offsetof(xio_key_def, fields) == 51);
static_assert(offsetof(xio_key_def, table) == 97);
static_assert(offsetof(xio_key_def, field_count) == 99);
