#pragma once

/// How a variable is drawn; the numbers are fixed.
enum VarType : int {
    kTypeData = 1,
    kTypeValue = 2,
    kTypeText = 3,
    kTypeMark = 4,
    kTypeInt = 5,
    kTypeMap = 6,
    kTypeFrame = 7,
    kTypePanel = 8,
    kTypeGrid = 10,
    kTypeCont = 11,
    kTypeLine = 12,        ///< word "ln": labelled contours
    kTypeDashedLine = 13,  ///< word "dln"
    kTypeNegDashed = 14,   ///< word "ndln"
    kTypeFill = 15,        ///< word "cf"
    kTypeFillAndLine = 16, ///< word "lcf"
    kTypeGridValue = 17,
    kTypeWind = 20,
    kTypeVector = 21,
    kTypeBarb = 22,
    kTypeStream = 23,
    kTypePlot = 30,
    kTypeCloud = 31,
    kTypeWindBarb = 32,   ///< word "wbarb"
    kTypeCloudBarb = 33,  ///< word "cbarb"
    kTypeDotBarb = 34,    ///< word "dbarb"
    kTypeVectorBarb = 35, ///< word "vbarb"
    kTypeSymbol = 36,
    kTypePointLine = 37, ///< word "line"
    kTypeConst = 40
};

/// Code of a type word, case ignored; -1 for null and for a word that is none.
int VAR_plot_code(const char *word);

/// Name of a type code, for traces; "----" for a code that has none.
const char *VAR_plot_name(int code);

/// Type that a grid function gives its result, by its name up to '-': 20, 21 or 23 for the wind
/// functions, 10 for the others, 0 for a name that is no function.
int GRD_func_type(const char *name);

/// 1 if the function (name up to '-') has two results, as "grad" and "vdiff" have; else 0.
int GRD_is_vector_func(const char *name);
