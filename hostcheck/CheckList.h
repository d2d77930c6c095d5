#pragma once

// All checks, in the order in which they are made, with what users see of a host that fails them.

#include <array>
#include <string_view>

namespace velt::hostcheck {

struct Check {
  std::string_view name;
  std::string_view suffers;
};

// clang-format off
inline constexpr std::array checks = {
    // --- functions of the host ------------------------------------------------------------------------------------
    //    name                    what suffers
    Check{"string-length",        "texts of all rows: they are cut or read beyond their end"},
    Check{"string-end",           "texts of all rows: they are read beyond their end"},
    Check{"string-null",          "values without a text"},
    Check{"value-init",           "all rows: what was in memory is taken for a value, and cleared"},
    Check{"value-clear",          "all rows: values are cleared twice"},
    Check{"value-release",        "rows whose values are objects: they are lost, or end too early"},
    Check{"value-reentry",        "the program: an object that ends clears its value, and is released twice"},
    Check{"value-by-reference",   "rows whose values refer to somebody else's: these are given back"},
    Check{"array-bounds",         "dynamic rows: the first or the last source or property is missing"},
    Check{"array-type",           "dynamic rows: none is shown"},
    Check{"array-index",          "dynamic rows: what stands beside the array is taken for a source"},
    Check{"array-references",     "dynamic rows: sources are lost, or end too early"},
    Check{"array-throws",         "dynamic rows: a source that cannot be kept ends the program"},
    Check{"heap",                 "all lists"},
    Check{"heap-threads",         "lists that end on another thread"},
    Check{"empty-block",          "all lists: a new one is not empty, or is freed while it is in use"},
    Check{"message-library",      "all messages: they are empty"},
    Check{"message-texts",        "users, who are told nothing when this fails"},
    Check{"message-formats",      "the message, which shows garbage in place of the property's name"},
    Check{"message-cut",          "all messages: memory behind the text is overwritten"},
    Check{"com-start",            "all rows: a selection cannot be set up, message 1001"},
    Check{"error-text",           "the message of an operation that the host ends by an exception"},
    // --- the database ---------------------------------------------------------------------------------------------
    Check{"made-up-id",           "the program: a palette's id that is out of date leads into memory"},
    Check{"entity-opens",         "the entity: no rows (message 1002), and nothing is written"},
    Check{"opening-agrees",       "writing and by-layer colors: one goes by the status, the other by the pointer"},
    Check{"entity-class",         "the entity, which is not written and is never taken for a block reference"},
    Check{"class-id",             "the entity, which has the properties of any entity only, or message 1002"},
    Check{"class-id-bytes",       "rows of all classes whose ids agree up to there: they get each other's properties"},
    Check{"layer-opens",          "writing: such entities are left out of every write, and nobody is told"},
    // --- automation objects ---------------------------------------------------------------------------------------
    Check{"object-made",          "the whole selection: message 1002"},
    Check{"object-unknown-class", "the whole selection, when a class is not known: an object of nobody is used"},
    Check{"object-interfaces",    "the whole selection: messages 1003, 1004, 1011 or 1020"},
    Check{"object-identity",      "plug-ins, which know an entity by its object"},
    Check{"object-refuses",       "what the layer takes for an interface that the object has"},
    Check{"object-counting",      "the program: an object ends while the palette shows it, or never"},
    Check{"object-binds",         "the entity: an object that speaks for nobody answers for it"},
    Check{"object-id",            "dynamic rows: their sources are asked for another entity"},
    // --- type information -----------------------------------------------------------------------------------------
    Check{"type-information",     "the whole selection: messages 1005 to 1007"},
    Check{"base-methods",         "the properties at the first seven places, which have no rows"},
    Check{"function-described",   "the whole selection: message 1008 or 1009"},
    Check{"name-resolves",        "the whole selection: message 1010"},
    Check{"name-unknown",         "writing: a value goes to another property than the one of that name"},
    Check{"type-name",            "the row, which is a plain value: no length, angle, layer or color"},
    Check{"property-id",          "the property: it cannot be written, or passes for one of a plug-in"},
    Check{"class-shares-list",    "rows of the class: all entities are shown with the properties of the first one"},
    // --- properties -----------------------------------------------------------------------------------------------
    Check{"flag-shown",           "the row, which is hidden by any other byte than 1"},
    Check{"flag-one-byte",        "the row's other fields, which are overwritten"},
    Check{"label",                "the label of the row"},
    Check{"category",             "the whole selection: message 1021"},
    Check{"category-name",        "the whole selection: message 1022; or the heading of the row"},
    Check{"value-got",            "the row, which shows 0 as if it were the value"},
    Check{"value-type",           "the row, which shows a value of another type, or varies"},
    Check{"value-expander",       "the row, which shows nothing"},
    Check{"value-text",           "the row, which varies although all values are empty"},
    Check{"list-ownership",       "the program: the texts of choices or elements are freed twice"},
    Check{"choice-lists",         "the choices of the row"},
    Check{"choice-values",        "the choices of the row, which end there"},
    Check{"choice-types",         "the choices of the row, whose values are cut to integers"},
    Check{"element-lists",        "the elements of the property, of which some are missing or nobody's"},
    Check{"element-values",       "the elements of the property, which end there"},
    Check{"element-labels",       "the elements of the property, which users cannot tell apart"},
    Check{"element-cookies",      "the elements of the property: a value is written to another one"},
    Check{"failed-outputs",       "the row: what a failing call left is shown"},
    Check{"exceptions",           "the program, which ends"},
};
// clang-format on

}  // namespace velt::hostcheck
