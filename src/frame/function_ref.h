// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <type_traits>
#include <utility>

template <class Signature>
class FunctionRef;

/// A borrowed callable: two words, no allocation, one indirect call. It must not outlive what it refers to.
template <class Result, class... Args>
class FunctionRef<Result(Args...)> {
 public:
  template <class F>
  requires(!std::is_same_v<std::remove_cvref_t<F>, FunctionRef> && std::is_invocable_r_v<Result, F&, Args...>)
      FunctionRef(F&& f)
      : object(const_cast<void*>(static_cast<const void*>(std::addressof(f)))),
        call([](void* o, Args... args) -> Result {
          return (*static_cast<std::remove_reference_t<F>*>(o))(std::forward<Args>(args)...);
        }) {}

  Result operator()(Args... args) const { return call(object, std::forward<Args>(args)...); }

 private:
  void* object;
  Result (*call)(void*, Args...);
};
