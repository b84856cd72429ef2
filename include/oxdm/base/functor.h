#pragma once
// The callback values of the library: CBFunctor0wRet, CBFunctor1,
// CBFunctor1wRet, CBFunctor2, CBFunctor2wRet.
//
// A functor is a small value, copied freely. A default-constructed functor is
// empty (IsEmpty(), and false in a boolean test); calling an empty functor is
// a programming fault. A functor is made from any callable, or with
// makeFunctor from a member function of an object or a free function:
//
//   auto f = makeFunctor(static_cast<CBFunctor1<int>*>(nullptr), obj, &Obj::OnValue);
//   auto g = makeFunctor(static_cast<CBFunctor1<int>*>(nullptr), &FreeFunction);
//
// The object given to makeFunctor is held by address: it must outlive every
// copy of the functor.

#include <cassert>
#include <functional>
#include <type_traits>
#include <utility>

namespace oxdm_detail {

template <class Signature>
class FunctorBase;

template <class R, class... Args>
class FunctorBase<R(Args...)> {
public:
    FunctorBase() = default;
    template <class F>
        requires(!std::is_base_of_v<FunctorBase, std::decay_t<F>> && std::is_invocable_v<F&, Args...>)
    FunctorBase(F&& callable) : fn_(std::forward<F>(callable)) {}  // NOLINT: implicit from callables

    bool IsEmpty() const { return !fn_; }
    explicit operator bool() const { return static_cast<bool>(fn_); }

    // REQUIRES: !IsEmpty()
    R operator()(Args... args) const {
        assert(fn_ && "call through an empty functor");
        return fn_(std::forward<Args>(args)...);
    }

private:
    std::function<R(Args...)> fn_;
};

}  // namespace oxdm_detail

template <class R>
class CBFunctor0wRet : public oxdm_detail::FunctorBase<R()> {
public:
    using oxdm_detail::FunctorBase<R()>::FunctorBase;
};

template <class P1>
class CBFunctor1 : public oxdm_detail::FunctorBase<void(P1)> {
public:
    using oxdm_detail::FunctorBase<void(P1)>::FunctorBase;
};

template <class P1, class R>
class CBFunctor1wRet : public oxdm_detail::FunctorBase<R(P1)> {
public:
    using oxdm_detail::FunctorBase<R(P1)>::FunctorBase;
};

template <class P1, class P2>
class CBFunctor2 : public oxdm_detail::FunctorBase<void(P1, P2)> {
public:
    using oxdm_detail::FunctorBase<void(P1, P2)>::FunctorBase;
};

template <class P1, class P2, class R>
class CBFunctor2wRet : public oxdm_detail::FunctorBase<R(P1, P2)> {
public:
    using oxdm_detail::FunctorBase<R(P1, P2)>::FunctorBase;
};

// A functor of type F that calls member on object.
template <class F, class Object, class Member>
    requires std::is_member_function_pointer_v<Member>
F makeFunctor(F*, Object& object, Member member) {
    Object* target = &object;
    return F([target, member](auto&&... args) -> decltype(auto) {
        return (target->*member)(std::forward<decltype(args)>(args)...);
    });
}

// The same with the object given by address; a null object gives an empty
// functor.
template <class F, class Object, class Member>
    requires std::is_member_function_pointer_v<Member>
F makeFunctor(F* tag, Object* object, Member member) {
    return object ? makeFunctor(tag, *object, member) : F();
}

// A functor of type F that calls a free function; a null function gives an
// empty functor.
template <class F, class Function>
    requires std::is_function_v<Function>
F makeFunctor(F*, Function* function) {
    return function ? F(function) : F();
}
