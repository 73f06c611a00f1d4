#pragma once

namespace scrivalen::test {

/// Makes the C library of this process print numbers with a decimal comma. @return false when the system cannot
bool setDecimalComma();

}  // namespace scrivalen::test
