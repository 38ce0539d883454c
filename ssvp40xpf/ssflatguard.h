#pragma once

#include <cstdint>
#include <exception>
#include <new>

#include "ssvp40xpf/ssexcept.h"
#include "ssvp40xpf/ssflat.h"
#include "ssvp40xpf/sssto.h"

/// Helpers shared by the two halves of the flat C interface.
namespace ssflat {

/// Reports to the bad-correlator callback.
void report(void* handle, const char* message);
void reportCorrelator(void* handle, std::uint32_t expected);

/// The object behind a handle; reports and returns null if the handle is of another kind.
template <class T>
T* object(SSObject* handle, std::uint32_t correlator) {
  if (handle != nullptr && handle->correlator == correlator) return static_cast<T*>(handle);
  reportCorrelator(handle, correlator);
  return nullptr;
}

/// The checked object, cast to the class that the flat functions create.
template <class T, class Base>
T* flatObject(SSObject* handle, std::uint32_t correlator) {
  Base* const base = object<Base>(handle, correlator);
  T* const found = dynamic_cast<T*>(base);
  if (base != nullptr && found == nullptr) reportCorrelator(handle, correlator);
  return found;
}

/// Runs `action`. If it throws, stores the exception in `keeper` and returns `failed`.
template <class Result, class Action>
Result guarded(const SSExceptionPresent& keeper, Result failed, Action action) {
  try {
    return action();
  } catch (const SSException& exception) {
    keeper.keepException(new SSException(exception));
  } catch (SSException* exception) {
    keeper.keepException(exception);
  } catch (const std::bad_alloc&) {
    keeper.keepException(new SSExceptionOutOfStorage);
  } catch (...) {
    keeper.keepException(new SSException(SSErrorPermanent, ssErrorText(SSErrorPermanent)));
  }
  return failed;
}

/// Creates an object; null on failure.
template <class Make>
SSObject* created(Make make) {
  try {
    return make();
  } catch (SSException* exception) {
    delete exception;
  } catch (...) {
  }
  return nullptr;
}

inline SSExceptionObject* handOut(const SSExceptionPresent& keeper) {
  return reinterpret_cast<SSExceptionObject*>(keeper.takeLastException());
}

}  // namespace ssflat
