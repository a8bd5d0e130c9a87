/* Calls the handlers of a change.

   While they are called, the history, the document and the lists of handlers
   stay as they are: the references walked here would dangle otherwise. So calls
   that edit or remove abort, and new handlers wait in _pendingHandlers until
   all were called. An exception waits in _thrown until the whole step is
   performed; every public function that calls handlers ends in rethrow(). */

#include <algorithm>
#include <utility>
#include <Corrade/Containers/GrowableArray.h>
#include <Corrade/Utility/Assert.h>
#include <Corrade/Utility/Debug.h>

#include "ChangeManager.h"

namespace OrrelinEngine {

namespace {

constexpr std::size_t HandlerCapacityStep = 16;

}

void ChangeManager::expectNotInHandler(const char* what) const {
    CORRADE_ASSERT(!_inHandler,
        "ChangeManager::" << Utility::Debug::nospace << what
                          << "from a change handler.", );
}

void ChangeManager::notify(const Change& change) {
    if(_currentGroup >= 0 || !_handlers.size())
        return;

    _inHandler = true;
    /* A copy, as a handler may write to the path through lastChange() */
    const Containers::String path = change.path;
    Containers::Array<Containers::StringView> segments =
        Containers::StringView{path}.split('/');
    for(const Containers::StringView segment: segments)
        if(HandlerList* const handlers = _handlers.find(segment))
            for(Containers::Pointer<ChangeHandler>& handler: *handlers)
                callHandler(*handler, change, segments);
    _inHandler = false;

    for(PendingHandler& pending: _pendingHandlers)
        registerHandler(pending.segment, std::move(pending.handler));
    arrayResize(_pendingHandlers, 0);
}

/* An exception must keep neither the other handlers from being called nor the
   rest of the step from being performed. The first one is kept. */
void ChangeManager::callHandler(ChangeHandler& handler, const Change& change,
    Containers::ArrayView<Containers::StringView> segments) {
    try {
        handler.handle(change, segments);
    } catch(...) {
        if(!_thrown)
            _thrown = std::current_exception();
    }
}

void ChangeManager::rethrow() {
    /* Forgotten before it's thrown, or the next call would throw it again */
    if(_thrown)
        std::rethrow_exception(std::exchange(_thrown, nullptr));
}

void ChangeManager::addChangeHandler(Containers::StringView segment,
    Containers::Pointer<ChangeHandler>&& handler) {
    CORRADE_ASSERT(handler,
        "ChangeManager::addChangeHandler(): handler cannot be nullptr.", );
    if(_inHandler)
        arrayAppend(_pendingHandlers,
            PendingHandler{Containers::String{segment}, std::move(handler)});
    else
        registerHandler(segment, std::move(handler));
}

void ChangeManager::addChangeHandler(Containers::StringView segment,
    FunctionChangeHandler::Callback function, void* userData) {
    addChangeHandler(segment,
        Containers::Pointer<ChangeHandler>{
            new FunctionChangeHandler{std::move(function), userData}});
}

void ChangeManager::registerHandler(Containers::StringView segment,
    Containers::Pointer<ChangeHandler>&& handler) {
    if(_handlers.size() == _handlers.capacity())
        _handlers.grow(HandlerCapacityStep);
    if(!_handlers.find(segment)) {
        /* Sorted in at once, as a map is only searchable when compiled */
        _handlers.put(segment, HandlerList{});
        _handlers.compile();
    }
    arrayAppend(*_handlers.find(segment), std::move(handler));
}

Containers::Pointer<ChangeHandler> ChangeManager::removeChangeHandler(
    Containers::StringView segment, const ChangeHandler& handler) {
    expectNotInHandler("removeChangeHandler(): Can't remove handlers");
    HandlerList* const handlers = _handlers.find(segment);
    if(!handlers)
        return nullptr;
    const auto found = std::find_if(handlers->begin(), handlers->end(),
        [&](const Containers::Pointer<ChangeHandler>& i) {
            return i.get() == &handler;
        });
    if(found == handlers->end())
        return nullptr;
    Containers::Pointer<ChangeHandler> out = std::move(*found);
    std::move(found + 1, handlers->end(), found);
    arrayRemoveSuffix(*handlers);
    return out;
}

}
