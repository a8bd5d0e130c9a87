#ifndef Orrelin_shared_Function_h
#define Orrelin_shared_Function_h

/** @file
 * @brief Class @ref OrrelinEngine::Function
 */

#include <cstddef>
#include <cstring>
#include <functional>
#include <new>
#include <type_traits>
#include <utility>
#include <Corrade/Utility/Assert.h>

#include "OrrelinEngine.h"

namespace OrrelinEngine {

/** @brief Callable of a signature, such as @cpp Function<void(int)> @ce */
template<class> class Function;

/**
@brief Move-only callable of fixed size

Holds any callable of the signature, pointers to members included. If the
signature returns nothing, the callable's result is dropped. A callable that is
trivially copyable and fits the 64 bytes of storage is stored in them. Any other
is allocated on the heap, and the storage holds a pointer to it. An instance can
therefore be relocated as bytes, and moving it never calls anything of the
callable.
*/
template<class R, class... Args> class Function<R(Args...)> {
public:
    /** @brief An empty function; calling it prints a line and aborts */
    /*implicit*/ Function() noexcept: _call{nullptr}, _destroy{nullptr} {}

    /**
     * @brief Constructor
     *
     * Takes over @p callable and destroys it together with the function. A null
     * pointer to a function or to a member makes an empty function.
     */
    template<class F,
        class = typename std::enable_if<
            !std::is_same<typename std::decay<F>::type, Function>::value &&
            std::is_invocable_r<R, typename std::decay<F>::type&,
                Args...>::value>::type>
    /*implicit*/ Function(F&& callable): Function{} {
        typedef typename std::decay<F>::type Callable;
        /* Of the type as given: a reference to a function decays to a pointer
           but is never null, and compilers warn about comparing it */
        typedef typename std::remove_reference<F>::type Given;
        if constexpr(std::is_pointer<Given>::value ||
            std::is_member_pointer<Given>::value)
            if(!callable)
                return;

        if constexpr(std::is_trivially_copyable<Callable>::value &&
            sizeof(Callable) <= sizeof(_storage) &&
            alignof(Callable) <= alignof(std::max_align_t)) {
            new(_storage) Callable(std::forward<F>(callable));
            _call = [](void* storage, Args... args) -> R {
                return invoke(*static_cast<Callable*>(storage),
                    std::forward<Args>(args)...);
            };
        } else {
            new(_storage) Callable* {new Callable(std::forward<F>(callable))};
            _call = [](void* storage, Args... args) -> R {
                return invoke(**static_cast<Callable**>(storage),
                    std::forward<Args>(args)...);
            };
            _destroy = [](void* storage) {
                delete *static_cast<Callable**>(storage);
            };
        }
    }

    /** @brief Copying is not allowed */
    Function(const Function&) = delete;

    /** @brief Move constructor; leaves @p other empty */
    Function(Function&& other) noexcept { take(other); }

    ~Function() { destroy(); }

    /** @brief Copying is not allowed */
    Function& operator=(const Function&) = delete;

    /** @brief Move assignment; leaves @p other empty */
    Function& operator=(Function&& other) noexcept {
        if(&other != this) {
            destroy();
            take(other);
        }
        return *this;
    }

    /** @brief Whether there is something to call */
    explicit operator bool() const { return _call; }

    /**
     * @brief Call the callable
     *
     * Expects that the function isn't empty; prints that it is and aborts
     * otherwise.
     */
    R operator()(Args... args) {
        CORRADE_ASSERT(_call,
            "Function::operator()(): Can't call an empty function.",
            (*static_cast<R (*)()>(nullptr))());
        return _call(_storage, std::forward<Args>(args)...);
    }

private:
    template<class F> static R invoke(F& callable, Args&&... args) {
        if constexpr(std::is_void<R>::value)
            static_cast<void>(
                std::invoke(callable, std::forward<Args>(args)...));
        else
            return std::invoke(callable, std::forward<Args>(args)...);
    }

    void destroy() {
        if(_destroy)
            _destroy(_storage);
    }

    void take(Function& other) {
        _call = other._call;
        _destroy = other._destroy;
        std::memcpy(_storage, other._storage, sizeof(_storage));
        other._call = nullptr;
        other._destroy = nullptr;
    }

    R (*_call)(void*, Args...);
    void (*_destroy)(void*);
    alignas(std::max_align_t) char _storage[64] = {};
};

}

#endif
