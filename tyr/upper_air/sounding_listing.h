#pragma once

// Listings of the sounding in force and of what THERM_compute found of it. A line whose value is
// Missing is left out. Lines go to the bits of `print`, so that the message mask chooses how much
// is shown:
//
//     1  headings, and the numbers that a forecast rests on
//     2  further variables and indices
//     4  the parts and variants of indices
//     8  the tables by level
//
// Between pages they pause, where paging is on (`plot_param` "page").

/// Sounding variables, indices with their risks in words, and the lift of the parcel.
void THERM_print_indices();

/// The temperature sounding: a row for the surface, for each level, for the tropopause and for the
/// maximum wind, where known. The columns are those of MET_print_level.
void THERM_print_levels();

/// Mean wind, storm motion, shear, helicity, and the indices of wind and energy.
void THERM_print_winds();

/// The wind sounding: pressure, height, direction, speed and components (knots), and the last four
/// once more relative to the storm, where its motion is known.
void THERM_print_wind_levels();

/// A row for each depth from 500 to 6000 m: mean wind and inflow, shear, helicity, vorticity.
void THERM_print_storm();
