// A reference to something callable, for parameters: no copy, no allocation. It must not outlive the call.
#pragma once

#include <memory>
#include <type_traits>
#include <utility>

namespace obmgr {

template <class Signature> class FunctionRef;

template <class Result, class... Argument> class FunctionRef<Result(Argument...)> {
public:
    template <class Callable>
    requires(!std::is_same_v<std::remove_cvref_t<Callable>, FunctionRef>)
        FunctionRef(Callable&& callable) // NOLINT: meant to convert
        : m_callable(const_cast<void*>(static_cast<const void*>(std::addressof(callable)))),
          m_call([](void* target, Argument... arguments) -> Result {
              return (*static_cast<std::add_pointer_t<Callable>>(target))(std::forward<Argument>(arguments)...);
          })
    {
    }

    Result operator()(Argument... arguments) const { return m_call(m_callable, std::forward<Argument>(arguments)...); }

private:
    void* m_callable;
    Result (*m_call)(void*, Argument...);
};

} // namespace obmgr
