#include "oxdm/record/conditions.h"

#include <algorithm>
#include <cstring>

#include "oxdm/common/dictionary/flat_definitions.h"
#include "oxdm/common/store/data_file.h"
#include "oxdm/common/values/date_text.h"

namespace {

constexpr int kConstantText = 51;  // characters of a constant kept, value and display

// Fills a 48-byte operand header for `field`.
void FillOperand(const oxdmConditionField& field, xc_operand_def* operand) {
    std::memset(operand, 0, sizeof *operand);
    operand->kind = XC_OPERAND_FIELD;
    operand->table = field.Table();
    const CString name = field.Field().Left(sizeof operand->field);
    std::memcpy(operand->field, name.c_str(), name.GetLength());
    std::strncpy(operand->appl, field.Dict().Left(2).c_str(), 2);
    operand->letter[0] = field.Dict().GetLength() > 2 ? field.Dict()[2] : '\0';
    operand->file_code = field.FileCode();
    operand->field_num = xio_num(field.FileNum(), 2, field.Table(), field.Field().c_str());
    xio_fld_def def;
    std::memset(&def, 0, sizeof def);
    xio_get_fld_def(field.FileNum(), operand->field_num, &def, 0, true);
    operand->type = def.type;
}

// A record with the left header filled and the field's type copied to the
// right header, ready for a constant.
xc_cond_def ConstantRecord(const oxdmConditionField& left) {
    xc_cond_def cond;
    std::memset(&cond, 0, sizeof cond);
    FillOperand(left, &cond.left);
    cond.right.type = cond.left.type;
    return cond;
}

void SetText(xc_cond_def* cond, const CString& text) {
    std::memcpy(cond->text, text.c_str(), std::min<size_t>(text.GetLength(), sizeof cond->text));
}

oxdmConditions One(xc_cond_def cond, short op) {
    cond.op = op;
    oxdmConditions list;
    list.Add(cond);
    return list;
}

xc_cond_def Constant(const oxdmConditionField& left, double value) {
    xc_cond_def cond = ConstantRecord(left);
    CString text;
    switch (cond.right.type) {
        case XIO_NUMERIC:
            std::memcpy(cond.value, &value, sizeof value);
            text.Format("%f", value);
            break;
        case XIO_BOOLEAN: {
            const short flag = static_cast<short>(value);
            std::memcpy(cond.value, &flag, sizeof flag);
            text = flag != 0 ? "X" : "[ ]";
            break;
        }
        case XIO_CHOICE:
        case XIO_CHOICE8:
        case XIO_CHOICE9: {
            std::memcpy(cond.value, &value, sizeof value);
            char item[XIO_ITEM_TEXT_SIZE] = {};
            const short field = xio_num(left.FileNum(), 2, left.Table(), left.Field().c_str());
            xio_get_item_alpha(left.FileNum(), field, static_cast<short>(value), nullptr, item);
            text = CString(item).Left(kConstantText);
            break;
        }
        default:
            break;
    }
    SetText(&cond, text);
    return cond;
}

// A text constant: its first 51 characters, and the same in double quotes
// as the display text, which fills all 52 bytes (the closing quote and the
// terminator left out) when the text is that long.
xc_cond_def Constant(const oxdmConditionField& left, const CString& value) {
    xc_cond_def cond = ConstantRecord(left);
    const CString kept = value.Left(kConstantText);
    std::memcpy(cond.value, kept.c_str(), kept.GetLength());
    SetText(&cond, "\"" + kept + "\"");
    return cond;
}

xc_cond_def Constant(const oxdmConditionField& left, const x_date_def& value) {
    xc_cond_def cond = ConstantRecord(left);
    std::memcpy(cond.value, &value, sizeof value);
    char text[XD_DATE_TEXT_SIZE] = {};
    xd_alpha_date(&value, text, 0, 0, 0, false);
    SetText(&cond, text);
    return cond;
}

xc_cond_def Constant(const oxdmConditionField& left, const x_time_def& value) {
    xc_cond_def cond = ConstantRecord(left);
    std::memcpy(cond.value, &value, sizeof value);
    char text[XD_TIME_TEXT_SIZE] = {};
    xd_alpha_time(&value, text, 0);
    SetText(&cond, text);
    return cond;
}

xc_cond_def Constant(const oxdmConditionField& left, const oxdmConditionField& right) {
    xc_cond_def cond;
    std::memset(&cond, 0, sizeof cond);
    FillOperand(left, &cond.left);
    FillOperand(right, &cond.right);
    return cond;
}

}  // namespace

oxdmConditions::oxdmConditions() : list_(std::make_unique<std::vector<xc_cond_def>>()) {}

oxdmConditions::oxdmConditions(short handle) : oxdmConditions() { Get(handle); }

oxdmConditions::oxdmConditions(const oxdmConditions& other)
    : list_(std::make_unique<std::vector<xc_cond_def>>(*other.list_)) {}

oxdmConditions& oxdmConditions::operator=(const oxdmConditions& other) {
    if (this != &other) *list_ = *other.list_;
    return *this;
}

oxdmConditions::~oxdmConditions() = default;

void oxdmConditions::Put(short handle) const {
    for (xc_cond_def cond : *list_) xc_put_condition(handle, &cond);
}

void oxdmConditions::Get(short handle) {
    if (handle == 0) return;
    xc_reset_conditions(handle);
    xc_cond_def cond;
    while (xc_get_condition(handle, &cond) != 0) list_->push_back(cond);
}

void oxdmConditions::Add(const oxdmConditions& right, LogicalOp op) {
    if (right.Empty()) return;
    const size_t first = list_->size();
    list_->insert(list_->end(), right.list_->begin(), right.list_->end());
    (*list_)[first].connector = static_cast<short>(op);
}

oxdmConditionField::oxdmConditionField(const oxioDataFile& file, short table, const CString& field)
    : field_(field), table_(table), fileNum_(file.FileNum()) {
    xio_file_def def;
    std::memset(&def, 0, sizeof def);
    xio_get_def(fileNum_, &def, 1);
    dict_ = CString(def.appl_abbr, static_cast<int>(strnlen(def.appl_abbr, sizeof def.appl_abbr)));
    if (def.letter != '\0') dict_ += def.letter;
    fileCode_ = def.file_code;
}

#define OXDM_DEFINE_BUILDERS(Right)                                                                          \
    oxdmConditions operator==(const oxdmConditionField& l, Right r) { return One(Constant(l, r), XC_EQUAL); } \
    oxdmConditions operator!=(const oxdmConditionField& l, Right r) { return One(Constant(l, r), XC_NOT_EQUAL); } \
    oxdmConditions operator<(const oxdmConditionField& l, Right r) { return One(Constant(l, r), XC_LESS); }   \
    oxdmConditions operator<=(const oxdmConditionField& l, Right r) { return One(Constant(l, r), XC_LESS_EQUAL); } \
    oxdmConditions operator>=(const oxdmConditionField& l, Right r) { return One(Constant(l, r), XC_GREATER_EQUAL); }
OXDM_DEFINE_BUILDERS(double)
OXDM_DEFINE_BUILDERS(const CString&)
OXDM_DEFINE_BUILDERS(const x_date_def&)
OXDM_DEFINE_BUILDERS(const x_time_def&)
OXDM_DEFINE_BUILDERS(const oxdmConditionField&)
#undef OXDM_DEFINE_BUILDERS

oxdmConditions operator&&(const oxdmConditions& left, const oxdmConditions& right) {
    oxdmConditions out(left);
    out.Add(right, oxdmConditions::And);
    return out;
}

oxdmConditions operator||(const oxdmConditions& left, const oxdmConditions& right) {
    oxdmConditions out(left);
    out.Add(right, oxdmConditions::Or);
    return out;
}
