#pragma once

namespace tljira {

class TableView;

/// Tells screen readers what tables are, once per process: lists of rows, which are named by the texts in their cells
/// and can be chosen with the action "Press".
void makeTablesAccessible();

/// Another row has been selected.
void tellOfSelection(const TableView& table);

} // namespace tljira
