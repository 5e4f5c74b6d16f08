#include "base/vb_error.h"

const char* vbErrorDescription(int number) {
    switch (number) {
        case 5:
            return "Invalid procedure call or argument";
        case 6:
            return "Overflow";
        case 9:
            return "Subscript out of range";
        case 13:
            return "Type mismatch";
        case 52:
            return "Bad file name or number";
        case 53:
            return "File not found";
        case 55:
            return "File already open";
        case 62:
            return "Input past end of file";
        case 76:
            return "Path not found";
        case 94:
            return "Invalid use of Null";
        case 424:
            return "Object required";
        case 3001:
            return "Arguments are of the wrong type, are out of acceptable range, or are in "
                   "conflict "
                   "with one another.";
        case 3021:
            return "Either BOF or EOF is True, or the current record has been deleted. Requested "
                   "operation requires a current record.";
        case 3027:
            return "Cannot update. Database or object is read-only.";
        case 3045:
            return "Could not use the file; file already in use.";
        case 3070:
            return "The database engine does not recognize the name as a valid field name or "
                   "expression.";
        case 3075:
            return "Syntax error in query expression.";
        case 3077:
            return "Syntax error in expression.";
        case 3218:
            return "Could not update; currently locked.";
        case 3265:
            return "Item cannot be found in the collection corresponding to the requested name or "
                   "ordinal.";
        case 3343:
            return "Unrecognized database format.";
        case 3360:
            return "Query is too complex.";
        case 3421:
            return "Application uses a value of the wrong type for the current operation.";
        case 3704:
            return "Operation is not allowed when the object is closed.";
        case 3705:
            return "Operation is not allowed when the object is open.";
        case 3706:
            return "Provider cannot be found. It may not be properly installed.";
        case 3709:
            return "The connection cannot be used to perform this operation.";
        default:
            return "";
    }
}

VbError::VbError(int number, const std::string& description)
    : std::runtime_error(description), number_(number), description_(description) {}

VbError::VbError(int number) : VbError(number, std::string(vbErrorDescription(number))) {}
