#pragma once

#include "base/vb_error.h"

// The older access names its faults in its own numbers: a criteria or select text that
// does not parse is `syntaxNumber`, an unknown name 3070 in criteria and 3061 elsewhere.
template <class F>
auto inDaoTerms(int syntaxNumber, F&& f) {
    constexpr int TooFewParameters = 3061;
    try {
        return f();
    } catch (const VbError& e) {
        if (e.Number() == vberr::BadArguments) throw VbError(syntaxNumber);
        if (e.Number() == vberr::ItemNotFound)
            throw VbError(syntaxNumber == vberr::SyntaxErrorInCriteria ? vberr::UnknownField
                                                                       : TooFewParameters);
        throw;
    }
}
