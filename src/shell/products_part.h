#pragma once

#include <functional>
#include <string_view>

#include "forms/vars.h"

class Control;
class Products;

// A part of the main form: one subsystem's state and procedures, kept in that subsystem's
// folder. It reaches the form's controls and shared procedures through P, wires its own
// events in its constructor, and its variables are the form's, readable by name like any
// other (NAMED_VAR in a part registers with the form).
class ProductsPart {
  public:
    explicit ProductsPart(Products& form) : P(form) {}
    virtual ~ProductsPart() = default;
    ProductsPart(const ProductsPart&) = delete;
    ProductsPart& operator=(const ProductsPart&) = delete;

  protected:
    Products& P;
    VarTable& Vars();
    // A control's Click procedure: a procedure of the part itself, without arguments.
    template <class Part>
    void OnClick(std::string_view control, void (Part::*procedure)()) {
        Part* self = static_cast<Part*>(this);
        onClick(control, [self, procedure] { (self->*procedure)(); });
    }
    void onClick(std::string_view control, std::function<void()> procedure);
    // A control of the main form, as the form's own procedures reach it.
    Control& operator()(std::string_view name, int index = -1) const;
};
