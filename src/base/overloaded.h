#pragma once

namespace lumeno {

/// One callable out of several, for `std::visit`.
template <typename... Cases>
struct Overloaded : Cases... {
  using Cases::operator()...;
};
template <typename... Cases>
Overloaded(Cases...) -> Overloaded<Cases...>;

}  // namespace lumeno
