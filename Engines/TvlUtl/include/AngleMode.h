// How the functions of an expression take angles.
#pragma once

/// Angle mode of the parsers. Only Degrees has an effect: every other value leaves angles in radians.
enum class DRG : int {
    Radians = 0,    ///< half a turn is pi
    Degrees = 1,    ///< half a turn is 180
    Gradians = 2,   ///< as Radians
};
