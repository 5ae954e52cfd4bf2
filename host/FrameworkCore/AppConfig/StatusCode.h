#pragma once

namespace FrameworkCore::AppConfig {

// Result of an operation on one attribute. Callers that only want to know whether it worked compare with
// zero.
enum StatusCode : int {
    Success = 0,
    NotFound = 1,
    AlreadyExists = 2,
    NotReadable = 3,
    NotWritable = 4,
    WrongType = 5,           // the value cannot become one of the attribute's type without loss
    RefusedByValidation = 6, // the log names the validation and what it asks for
    InvalidPath = 7,
    BackendFailure = 8, // the backend's file cannot hold the change; the log says why
    Cancelled = 9,      // by whoever asked for it
    NotEnoughMemory = 10,
    InvalidPattern = 11 // the text of a search; see SearchInterface
};

} // namespace FrameworkCore::AppConfig
