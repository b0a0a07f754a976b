/// @file
/// @brief The exception family thrown by the foundation libraries.
///
/// Every exception derives from one interface of this family and from one standard exception
/// class, so callers may catch either: `catch (const std::logic_error&)` works as well as
/// `catch (const foundation::core::except::IInternalException&)`.
#pragma once

#include <stdexcept>
#include <system_error>
#include <utility>

#define FOUNDATION_CORE_API __attribute__((visibility("default")))

namespace foundation::core::except {

/// Root interface of the family.
class FOUNDATION_CORE_API IException {
public:
    virtual ~IException();
    /// The message, the same text as the standard base's `what()`.
    virtual const char* message() const noexcept = 0;

protected:
    IException() = default;
    IException(const IException&) = default;
    IException& operator=(const IException&) = default;
};

/// An error detected inside a library (bad input, impossible combination, failed call).
class FOUNDATION_CORE_API IInternalException : public IException {
public:
    ~IInternalException() override;

protected:
    IInternalException() = default;
    IInternalException(const IInternalException&) = default;
    IInternalException& operator=(const IInternalException&) = default;
};

/// Joins an interface of the family with a standard exception class.
///
/// Constructible from a message (`std::logic_error`, `std::runtime_error`,
/// `std::invalid_argument`, `std::out_of_range`...), from an error code plus text
/// (`std::system_error`: `what()` reads "text: message"), or from an object of the standard base.
template <class Interface, class StdBase>
class Exception : public Interface, public StdBase {
public:
    using StdBase::StdBase;
    explicit Exception(const StdBase& base) : StdBase(base) {}

    const char* message() const noexcept override { return StdBase::what(); }
};

namespace detail {

/// The concrete type the libraries throw: an internal exception over a standard base.
template <class StdBase>
class AnonymousInternalException final : public Exception<IInternalException, StdBase> {
public:
    using Exception<IInternalException, StdBase>::Exception;
};

}  // namespace detail
}  // namespace foundation::core::except
