// Texts of the functions of the console, of time and of files. "{}" is a slot: the function's name
// in a sentence of a reader, else a word.
#pragma once

namespace kelo::text {

// Console
// NOTE: intended
inline constexpr const char* kClcInputs = "Function {}() requires not input argument";
inline constexpr const char* kClcOutputs = "Function {}() has no output";
inline constexpr const char* kWhoInputs = "Function \"{}\" should have no input argument";
inline constexpr const char* kClearOutputs = "Function {}() should have no output argument";
inline constexpr const char* kClearInputs = "Input arguments of {}() should be character vectors";
inline constexpr const char* kThrownByUser = "It was thrown by the user with the message \"{}\"";
inline constexpr const char* kFirstInputInvalid = "The 1st input argument is invalid";
inline constexpr const char* kCharacterArrayExpected = "It should be a character array";
inline constexpr const char* kInputOption = "In {}(prompt, s), s must be equal to the character 's'";
inline constexpr const char* kPauseCount = "{}() expects 0 or 1 input arguments";
inline constexpr const char* kPauseSeconds = "be a real positive scalar not equal to Inf nor NaN";
inline constexpr const char* kPauseInput = "{}() expects a character vector or a numeric scalar as its input argument";
inline constexpr const char* kPauseState = "In {}(state), state is expected to be 'on', 'off' or 'query'";

// Calls
inline constexpr const char* kFunctionExpected =
    "In {0}(f), the input f should be a character vector of function name or a function handle";

// Time
inline constexpr const char* kTicInputs = "Function {} should have no input argument";
inline constexpr const char* kTimeInputs = "Function {}() should have no input argument";
inline constexpr const char* kTocBeforeTic = "{} should be run after calling tic";
// NOTE: intended
inline constexpr const char* kTimeElapsed = "Time elapsed: {:e} seconds.";
inline constexpr const char* kTocNumber = "be a number obtained by calling t = toc";
inline constexpr const char* kTocNumeric = "Input argument of {}() should be a numeric value";

// Comma-separated files
// NOTE: intended: "2 or 4", though one and three are taken too.
inline constexpr const char* kCsvreadCount = "{0}() expects 2 or 4 input arguments, but {1} is provided";
inline constexpr const char* kCsvRange = "have 4 non-negative integers";
inline constexpr const char* kCsvRangeOrder =
    "In {}(fname, r1, c1, [r1 c1 r2 c2]), it should hold that r1 <= r2 and c1 <= c2";
inline constexpr const char* kInvalidFileName = "Invalid file name \"{}\"";
inline constexpr const char* kInvalidExtension = "Invalid file extension \"{}\"";
inline constexpr const char* kExtensionExpected = "It should be either \".csv\", \".dat\" or \".txt\"";
inline constexpr const char* kFailedToConvert = "Failed to convert \"{}\"";
inline constexpr const char* kNumbersExpected =
    "It expects numbers separated by commas, semicolons, spaces or new lines";
inline constexpr const char* kFailedToWrite = "Failed to write \"{}\"";
inline constexpr const char* kExportedMatrix = "An array exported to a csv file should be a matrix (ndim == 2)";
inline constexpr const char* kReading = "Reading {}: {:.0f} %";
inline constexpr const char* kArrayRead = "Array read from \"{}\" successfully";
inline constexpr const char* kArrayWritten = "Array written to \"{}\" successfully";

}  // namespace kelo::text
