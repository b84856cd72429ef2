// The memory table's logic, compiled once for each of its two cell types.

#include "stl_data_source_impl.h"

#include "stl_impl_table.tpp"
#include "stl_impl_focus.tpp"
#include "stl_impl_window.tpp"
#include "stl_impl_find.tpp"
#include "stl_impl_bookmarks.tpp"

template class oxdmSTLDataSourceImpl<std::vector<std::vector<CString>>>;
template class oxdmSTLDataSourceImpl<std::vector<std::vector<oxData*>>>;
