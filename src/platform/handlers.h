#pragma once

#include <QAbstractButton>
#include <QObject>
#include <functional>
#include <tuple>
#include <type_traits>
#include <utility>

#include "platform/commands.h"
#include "platform/form.h"
#include "store/failure.h"

namespace platform {

// Handlers of the toolkit's signals and events. No failure may pass through the toolkit: each
// handler is guarded where it is connected.

// Who tells the user of a failure that has ended a handler; set once by the program.
void setFailureReporter(std::function<void(const store::Failure&)> report);
void reportFailure(const store::Failure& failure);

// Runs what an event calls. A failure ends it, is told the user, and gives the default result.
template <typename Work>
auto guarded(Work&& work) -> decltype(work()) {
  try {
    return std::forward<Work>(work)();
  } catch (const store::Failure& failure) {
    reportFailure(failure);
    return decltype(work())();
  }
}

namespace detail {

// Calls a handler with as many of a signal's arguments as it takes.
template <typename Handler, typename Arguments, std::size_t... place>
void callWith(Handler& handler, Arguments& arguments, std::index_sequence<place...>) {
  if constexpr (std::is_invocable_v<Handler&, std::tuple_element_t<place, Arguments>&...>) {
    std::invoke(handler, std::get<place>(arguments)...);
  } else {
    static_assert(sizeof...(place) > 0, "the handler takes other arguments than the signal has");
    callWith(handler, arguments, std::make_index_sequence<sizeof...(place) - 1>());
  }
}

inline QWidget* windowOf(QWidget* widget) {
  return widget;
}
inline QWidget* windowOf(Form* form) {
  return form->Window();
}

}  // namespace detail

// Connects a signal to a handler, which lives as long as its context.
template <typename Sender, typename Signal, typename Handler>
QMetaObject::Connection onSignal(Sender* sender, Signal signal, QObject* context, Handler handler) {
  return QObject::connect(sender, signal, context,
                          [handler = std::move(handler)]<typename... A>(A... arguments) mutable {
                            guarded([&] {
                              std::tuple<A...> all(arguments...);
                              detail::callWith(handler, all, std::index_sequence_for<A...>());
                            });
                          });
}

// Connects a signal to a command of a form, or of the window that a widget stands in.
template <typename Sender, typename Signal, typename Context, typename Handler>
void onCommand(Sender* sender, Signal signal, Context* context, Handler handler) {
  onSignal(sender, signal, context,
           [context, handler = std::move(handler)]<typename... A>(A... arguments) {
             Commands::run(detail::windowOf(context), [=] {
               guarded([&] {
                 auto call = handler;
                 std::tuple<A...> all(arguments...);
                 detail::callWith(call, all, std::index_sequence_for<A...>());
               });
             });
           });
}

// The same for a procedure of the form.
template <typename Sender, typename Signal, typename F>
void onCommand(Sender* sender, Signal signal, F* form, void (F::*procedure)()) {
  onCommand(sender, signal, form, [form, procedure] { (form->*procedure)(); });
}
template <typename Sender, typename Signal, typename F, typename... A>
void onSignal(Sender* sender, Signal signal, F* form, void (F::*procedure)(A...)) {
  onSignal(sender, signal, static_cast<QObject*>(form),
           [form, procedure](A... arguments) { (form->*procedure)(arguments...); });
}

// Connects a button of a form, known by its name, to a command of the form.
template <typename F, typename Handler>
void onClick(F* form, const char* button, Handler handler) {
  onCommand(form->template control<QAbstractButton>(QString::fromLatin1(button)),
            &QAbstractButton::clicked, form, handler);
}

}  // namespace platform
