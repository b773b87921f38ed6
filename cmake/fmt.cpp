// {fmt}'s functions, compiled once for each target instead of with each source file.
#include <fmt/format-inl.h>

namespace fmt::detail {

template auto thousands_sep_impl<char>(locale_ref) -> thousands_sep_result<char>;
template auto decimal_point_impl<char>(locale_ref) -> char;

}  // namespace fmt::detail
