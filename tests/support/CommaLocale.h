#pragma once

#include <locale>
#include <string>

namespace quillon::test {

/// Numbers with a decimal comma, and a point behind each thousand.
class CommaNumbers : public std::numpunct<char> {
protected:
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

/// For the length of a scope, new streams get a locale with a decimal comma.
class CommaLocale {
public:
    CommaLocale() : before(std::locale::global(std::locale(std::locale::classic(), new CommaNumbers))) {}
    CommaLocale(const CommaLocale&) = delete;
    CommaLocale& operator=(const CommaLocale&) = delete;
    ~CommaLocale() { std::locale::global(before); }

private:
    std::locale before;
};

} // namespace quillon::test
