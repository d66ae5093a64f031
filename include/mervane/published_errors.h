#pragma once

#include <array>

#include "mervane/enumerations.h"

namespace mervane {

/// A public error code with its fixed text, in UTF-8.
struct PublishedError {
  ERRClassifier number;
  const char* description;
};

/// The texts of the public error codes, for whoever raises or shows one. Hosts raise those that nothing here does.
namespace published {
inline constexpr PublishedError invalidArgument{eErr_InvalidArgument, "Invalid argument"};
inline constexpr PublishedError invalidReference{eErr_InvalidReference, "Invalid cell reference."};
inline constexpr PublishedError compareNameSheet{eErr_CompareNameSheet,
                                                 "Input and output ranges must be on the same spreadsheet."};
/// NB: the blank at its end; the name of the range follows.
inline constexpr PublishedError clearRange{eErr_ClearRange, "The clusterization output will be placed to the range "};
inline constexpr PublishedError notDigit{eErr_NotDigit, "Only numbers are allowed for clusterization"};
inline constexpr PublishedError rangeIntersect{eErr_RangeIntersect, "Cannot clusterize intersecting ranges"};
inline constexpr PublishedError repeatedInputs{eErr_RepeatedInputs, "Cannot clusterize equal values"};
inline constexpr PublishedError learningRate{eErr_ErrLearningRate, "Please, specify learning rate between 0 and 1"};
inline constexpr PublishedError initialWeights{eErr_ErrInitialWeights,
                                               "Please, specify initial weights between 0 and 1"};
inline constexpr PublishedError noDigit{eErr_NoDigit, "Cells must contain only numbers"};
inline constexpr PublishedError categoriesCount{eErr_CategoriesCount,
                                                "Please, specify Number of clusters between 1 and 254"};
/// Its apostrophes are U+2019.
inline constexpr PublishedError table{
    eErr_Table,
    "The data that you have in the spreadsheet is in the format of a table and can\u2019t be analyzed by Kelvash if it "
    "is not converted into the normal range of cells format. Do you want to convert the table to range and continue "
    "(the data and appearance won\u2019t be changed)?"};
inline constexpr PublishedError inputAndOutputAreNotSame{eErr_InputAndOutputAreNotSame,
                                                         "Input and output ranges are not the same"};

/// All of them, in the order of their numbers.
inline constexpr std::array all{
    invalidArgument,         invalidReference, compareNameSheet, clearRange, notDigit,        rangeIntersect,
    repeatedInputs,          learningRate,     initialWeights,   noDigit,    categoriesCount, table,
    inputAndOutputAreNotSame};
}  // namespace published

/// Raises the error as a Failure with its text.
[[noreturn]] void raise(const PublishedError& error, const char* source = "");

}  // namespace mervane
