#pragma once

#include <stdexcept>
#include <string>

// A failed operation, carrying the classic runtime error number that the program's
// error reporter and its handlers test.
class VbError : public std::runtime_error {
  public:
    VbError(int number, const std::string& description);
    explicit VbError(int number);

    int Number() const { return number_; }
    const std::string& Description() const { return description_; }

  private:
    int number_;
    std::string description_;
};

// The classic error numbers the program meets.
namespace vberr {
inline constexpr int InvalidProcedureCall = 5;
inline constexpr int Overflow = 6;
inline constexpr int SubscriptOutOfRange = 9;
inline constexpr int TypeMismatch = 13;
inline constexpr int BadFileNameOrNumber = 52;
inline constexpr int FileNotFound = 53;
inline constexpr int FileAlreadyOpen = 55;
inline constexpr int InputPastEndOfFile = 62;
inline constexpr int PathNotFound = 76;
inline constexpr int ObjectNotSet = 91;  // object variable or With block variable not set
inline constexpr int InvalidUseOfNull = 94;
inline constexpr int ControlArrayElementMissing = 340;  // also: no such control or form
inline constexpr int ObjectRequired = 424;
inline constexpr int PropertyNotFound = 438;  // object doesn't support this property or method
inline constexpr int BadArguments = 3001;     // arguments wrong, out of range or in conflict
inline constexpr int NoCurrentRecord = 3021;
inline constexpr int SyntaxErrorInExpression = 3075;
inline constexpr int SyntaxErrorInCriteria = 3077;
inline constexpr int UnknownField = 3070;
inline constexpr int ItemNotFound = 3265;
inline constexpr int WrongType = 3421;  // a value of the wrong type for the operation
inline constexpr int ObjectClosed = 3704;
inline constexpr int ObjectOpen = 3705;
inline constexpr int ProviderNotFound = 3706;
inline constexpr int ConnectionClosed = 3709;
inline constexpr int NotADatabase = 3343;  // unrecognized database format
inline constexpr int DatabaseReadOnly = 3027;
inline constexpr int FileInUse = 3045;     // the file is locked by another program
inline constexpr int RecordLocked = 3218;  // a write refused by another program's lock
inline constexpr int QueryTooComplex = 3360;
}  // namespace vberr

// The classic description of an error number ("File not found"), "" when unknown.
const char* vbErrorDescription(int number);
