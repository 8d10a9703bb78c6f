#pragma once

#include <cstdint>

// The settings table: thirty numbers by slot, and the thirteen draw components.

/// Slots in use.
enum PrmSlot {
    kPrmDevice = 2, ///< output device code: 1 display, 3 metafile, 4 PostScript, 5 HPGL, 6 window
    kPrmDomainForm = 5, ///< how the plot domain was defined
    kPrmTime = 6,       ///< requested time
    kPrmLevelKind = 7,  ///< requested level kind
    kPrmLevelValue = 8, ///< requested level value
    kPrmPlotType = 11,  ///< plot type
    kPrmFileParam = 15, ///< 1 overwrite, 2 append, 3 use what exists; below 1 ask
    kPrmBatch = 19,     ///< a BatchMode
    kPrmHelp = 20,
    kPrmSlots = 30
};

/// What a run without a user does at the end of a plot.
enum BatchMode {
    kBatchDetached = 1, ///< puts itself in the background
    kBatchWaited = 2    ///< stays, so that its exit code tells of the plot
};

/// A slot's value, kMissingInt when unset; 0 for a slot outside the table.
std::intptr_t PRM_get(int slot);
/// Sets a slot. Returns 0, -1 for a slot outside the table.
int PRM_set(int slot, int value);
int PRM_set_ptr(int slot, std::intptr_t value);
/// Sets all slots to a value.
void PRM_clear(int value);
/// 1 in batch mode, else 0.
int PRM_is_batch();
/// 1 if help was asked for, else 0.
int PRM_is_help();

/// Draw components.
enum DrawSlot {
    kDrawText = 0, ///< always the sum of 1 to 6
    kDrawTextUl = 1,
    kDrawTextUc = 2,
    kDrawTextUr = 3,
    kDrawTextLl = 4,
    kDrawTextLc = 5,
    kDrawTextLr = 6,
    kDrawData = 7,
    kDrawMap = 8,
    kDrawGrid = 9,
    kDrawSum = 10, ///< the summary
    kDrawBorder = 11,
    kDrawAll = 12, ///< always the sum of 0 to 11
    kDrawSlots = 13
};

/// A draw component, all 1 at start; 0 for a slot outside the table.
int PRM_get_draw(int slot);
/// Sets a component: kDrawAll writes 0 to 11, kDrawText 0 to 6; then the two sums are made afresh.
/// Returns 0, -1 for a slot outside the table.
int PRM_set_draw(int slot, int value);
/// All thirteen slots to 0.
void PRM_clear_draw();
