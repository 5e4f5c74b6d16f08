#pragma once

#include <gtest/gtest.h>

#include "base/vb_error.h"

// The statement fails with the classic error `number`.
#define EXPECT_VBERROR(statement, number)                  \
    do {                                                   \
        try {                                              \
            statement;                                     \
            ADD_FAILURE() << #statement " did not fail";   \
        } catch (const VbError& e) {                       \
            EXPECT_EQ(e.Number(), (number)) << #statement; \
        }                                                  \
    } while (0)
