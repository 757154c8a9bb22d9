#pragma once

class TableView;
class WindowSettings;

// Applies the sort order that the settings hold for the table, and saves there each order that the user chooses. The
// object name of the table identifies it. The settings outlive the table.
void keepSortOrder(TableView& table, WindowSettings& settings);
