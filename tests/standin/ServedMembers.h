#pragma once

#include <memory>
#include <utility>

#include "standin/ServedObject.h"

namespace tessarine::standin
{

/// Members that are the same in every object model.

/// A number that can be read.
template <class Surface>
Member IntegerMember(String name, const std::shared_ptr<Surface>& object, std::int32_t (Surface::*get)())
{
    return {std::move(name), [=](const Arguments&) { return Variant(((*object).*get)()); }};
}

/// A text that can be read.
template <class Surface>
Member TextMember(String name, const std::shared_ptr<Surface>& object, String (Surface::*get)())
{
    return {std::move(name), [=](const Arguments&) { return Variant(((*object).*get)()); }};
}

/// A text that can be read and put.
template <class Surface>
Member TextMember(String name, const std::shared_ptr<Surface>& object, String (Surface::*get)(),
                  void (Surface::*put)(const String&))
{
    return {std::move(name), [=](const Arguments&) { return Variant(((*object).*get)()); },
            [=](const Variant& value) { ((*object).*put)(value.ToText()); }};
}

/// A method without arguments and without a result.
template <class Action>
Member Method(String name, Action action)
{
    return {std::move(name), [action](const Arguments&) {
                action();
                return Variant();
            }};
}

}  // namespace tessarine::standin
