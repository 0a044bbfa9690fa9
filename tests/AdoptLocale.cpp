// Part of every test program: hosts adopt the locale of their user, so the tests do as well. With
// a locale that writes decimal commas they show that no text follows it.
#include <clocale>

namespace {
[[maybe_unused]] const char* const g_locale = std::setlocale(LC_ALL, "");
}  // namespace
