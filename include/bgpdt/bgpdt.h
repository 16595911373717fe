/* SPDX-FileCopyrightText: 2026 The bgpdt authors */
/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @file
 * libbgpdt: BGP's data types as a router keeps them, for every program and every language.
 *
 * A type turns text to a value and a value to text, tells why it refuses a text, orders values, and takes them to their
 * fields. A value is so many bytes as its type says; its numbers stand in the byte order of the router's big-endian
 * processor, so that a value is the same on every machine.
 *
 * Functions answer a code: BGPDT_OK, or a negative one where nothing was done. Those that have more to say take the
 * address of an error, which may be null; what it is given is released with bgpdt_error_free. Without it a refusal costs
 * no more than a success. Texts come with their size and need no NUL behind them; buffers come with their room. Every
 * function may be called from several threads at once, as long as the library stays open.
 *
 * Structures that the library fills begin with their size, which grows when a later version knows more: what lies behind
 * it is not there. Structures that a caller fills begin with the size that the caller knows.
 */
#pragma once

#ifdef __cplusplus
#include <cstddef>
#include <cstdint>
extern "C" {
#else
#include <stddef.h>
#include <stdint.h>
#endif

#define BGPDT_API __attribute__((visibility("default")))

struct lua_State;

/* ------------------------------------------------------------------------------------------------ codes, errors */

/** What functions answer. Later versions may know further negative codes. */
enum {
    BGPDT_OK = 0,            /**< Done. */
    BGPDT_BYTES = 1,         /**< Done, but what was printed is bytes and no text; only in modes that do so. */
    BGPDT_NUMBER = 2,        /**< Done, and the text is a decimal number. */
    BGPDT_REFUSED = -1,      /**< The type refuses the text, the value or the table. */
    BGPDT_NO_TEXT = -2,      /**< The type makes no value of text. */
    BGPDT_NO_OPERATION = -3, /**< The type has no such operation. */
    BGPDT_NO_TYPE = -4,      /**< There is no type of the name. */
    BGPDT_NO_PLUGIN = -5,    /**< The plug-in or the file of names cannot be loaded, or others are loaded already. */
    BGPDT_NO_ROOM = -6,      /**< A buffer is too small. */
    BGPDT_NO_MEMORY = -7,    /**< Memory is out. */
    BGPDT_NO_SENSE = -8,     /**< An argument is null or makes no sense. */
    BGPDT_FAILED = -9,       /**< Something else went wrong. */
    BGPDT_NO_FIELD = -10     /**< No value of the type has a field of the name. */
};

/** What a repair makes of the value that a refused text seems to mean. */
enum {
    BGPDT_SPELLING = 0, /**< The same, written as the type takes it. */
    BGPDT_EXAMPLE = 1,  /**< What is missing comes from an example. */
    BGPDT_VALUE = 2     /**< Another value. */
};

/** A text: characters with a NUL behind them that the size does not count. */
typedef struct bgpdt_text {
    const char *data; /**< Never null. */
    size_t size;      /**< In bytes. */
} bgpdt_text;

/** A form of text that a type would have taken. */
typedef struct bgpdt_form {
    bgpdt_text kind;    /**< The kind of value; empty for a type without kinds. */
    bgpdt_text form;    /**< What the kind's help says of its text; often empty. */
    bgpdt_text example; /**< A text of it. */
} bgpdt_form;

/** Why something was refused or could not be done. */
typedef struct bgpdt_error {
    size_t struct_size;            /**< sizeof(bgpdt_error), as the library knows it. */
    int32_t code;                  /**< What the function answered. */
    uint32_t status;               /**< The router's own answer, SYSDT_ERR_...; 0 where the type was not asked. */
    bgpdt_text message;            /**< The whole in a sentence. */
    bgpdt_text reason;             /**< Of a refused text: what is wrong in it. Empty if nothing near it is taken. */
    size_t at;                     /**< The first byte that is wrong; what is missing belongs in front of it. */
    size_t length;                 /**< Of what is wrong, in bytes; 0: something is missing. */
    size_t at_character;           /**< The same place in characters of UTF-8; a byte that is in none counts as one. */
    size_t characters;             /**< The same length in characters. */
    bgpdt_text repair;             /**< The nearest text that is taken; often empty. */
    int32_t change;                /**< What the repair is: BGPDT_SPELLING and its like. */
    const bgpdt_text *other_types; /**< The names of the types that take the text, the likeliest first. */
    size_t other_type_count;       /**< How many they are. */
    const bgpdt_form *forms;       /**< What the type takes, of types whose forms differ much. */
    size_t form_count;             /**< How many they are. */
    bgpdt_text picture;            /**< Of a refused text: two lines, its part round the place and "^~~" below. */
} bgpdt_error;

/** Releases an error. Null is none. */
BGPDT_API void bgpdt_error_free(bgpdt_error *error);

/** What a code means, in a few words with a NUL behind them that live as long as the program. */
BGPDT_API const char *bgpdt_code_text(int code);

/** Releases a text that a function handed over. Null is none. */
BGPDT_API void bgpdt_free(char *text);

/** The library's version, such as "1.0.0", which lives as long as the program. */
BGPDT_API const char *bgpdt_version(void);

/* ------------------------------------------------------------------------------------------------ library and types */

/** The opened library. */
typedef struct bgpdt_library bgpdt_library;

/** A type, in the mode of conversion that is usual for it or in another. Lives as long as the library is open. */
typedef struct bgpdt_type bgpdt_type;

/** How the library is opened. What is all zeros is left to the library. */
typedef struct bgpdt_options {
    size_t struct_size; /**< sizeof(bgpdt_options) */
    bgpdt_text plugin;  /**< The plug-in's file; empty: $BGPDT_PLUGIN's, else near the library, or the one linked in. */
    bgpdt_text names;   /**< The file of the names behind the name-index types; empty: there are none. */
} bgpdt_options;

/** What types do: bits of bgpdt_info::operations. */
enum {
    BGPDT_PARSE = 1 << 0,      /**< Text to a value. */
    BGPDT_PRINT = 1 << 1,      /**< A value to text. */
    BGPDT_CHECK = 1 << 2,      /**< Whether a value is allowed. */
    BGPDT_HELP = 1 << 3,       /**< What its input looks like. */
    BGPDT_COMPARE = 1 << 4,    /**< The order of two values. */
    BGPDT_TABLE = 1 << 5,      /**< A value to a script table. */
    BGPDT_READ_TABLE = 1 << 6, /**< A script table to a value. */
    BGPDT_SWAP = 1 << 7        /**< A value's numbers in the other byte order. */
};

/** A kind of value, of the types whose values begin with a sub-kind word. */
typedef struct bgpdt_kind {
    size_t struct_size;  /**< sizeof(bgpdt_kind), as the library knows it. */
    uint32_t number;     /**< The sub-kind word. */
    bgpdt_text name;     /**< "EVN" */
    bgpdt_text about;    /**< What it is, in a few words; empty for a kind of another plug-in. */
    bgpdt_text form;     /**< What its help says of its text; empty for one that takes none or shares another's help. */
    uint32_t takes_text; /**< Whether there are texts of it: 1 or 0. */
} bgpdt_kind;

/** What is known of a type. */
typedef struct bgpdt_info {
    size_t struct_size;             /**< sizeof(bgpdt_info), as the library knows it. */
    bgpdt_text name;                /**< "VRFRD" */
    bgpdt_text about;               /**< What it is, in a few words; empty for a type of another plug-in. */
    uint16_t id;                    /**< The router's number of it. */
    uint16_t base_kind;             /**< The router's storage kind, SYSDT_KIND_... */
    uint32_t mode;                  /**< The mode in which text is converted. */
    size_t value_size;              /**< The size of its values in bytes. */
    uint32_t operations;            /**< BGPDT_PARSE and its like. */
    bgpdt_text grammar;             /**< Which texts it takes, in a sentence; empty for one that takes none. */
    const bgpdt_text *samples;      /**< Texts that it takes, one of each form. */
    size_t sample_count;            /**< How many they are. */
    const bgpdt_text *help;         /**< What its help says of its input. */
    size_t help_count;              /**< How many texts that are. */
    const bgpdt_kind *const *kinds; /**< The kinds of its values, of types that have such. */
    size_t kind_count;              /**< How many they are. */
} bgpdt_info;

/** Room for any text that the router's types print. */
#define BGPDT_TEXT_ROOM 4352

/** Room for any value of the router's types. */
#define BGPDT_VALUE_ROOM 1280

/**
 * Opens the library. A process has one plug-in: while it is open, opening again gives the same library, which then has
 * to be closed as often. Other files than those that are open are refused.
 *
 * @param options  null: all is left to the library
 * @param library  receives the library
 * @param error    receives why not; may be null
 */
BGPDT_API int bgpdt_open(const bgpdt_options *options, bgpdt_library **library, bgpdt_error **error);

/**
 * Loads other names for the name-index types in place of those there are. No other function of the library may run
 * meanwhile.
 *
 * @param error  receives what is wrong with the file; the names are then those from before; may be null
 */
BGPDT_API int bgpdt_load_names(bgpdt_library *library, const char *file, size_t file_size, bgpdt_error **error);

/** Closes the library as often as it was opened. Its types are gone with the last time. Null is none. */
BGPDT_API void bgpdt_close(bgpdt_library *library);

/** How many types there are. */
BGPDT_API size_t bgpdt_type_count(const bgpdt_library *library);

/** The type of the number, in the order of the router's registration; null beyond the last. */
BGPDT_API const bgpdt_type *bgpdt_type_at(const bgpdt_library *library, size_t index);

/**
 * Finds a type by its name, in any case.
 *
 * @param type   receives the type
 * @param error  receives names like the one that there is not; may be null
 */
BGPDT_API int bgpdt_find(const bgpdt_library *library, const char *name, size_t name_size, const bgpdt_type **type,
                         bgpdt_error **error);

/** The same type in a mode of conversion from 0 to 255, of which types do 0 to 6; each in its way. */
BGPDT_API int bgpdt_in_mode(const bgpdt_type *type, unsigned mode, const bgpdt_type **in_mode);

/** What is known of the type; lives as long as the type does. Null for null. */
BGPDT_API const bgpdt_info *bgpdt_about(const bgpdt_type *type);

/** The word for one operation, "parse", with a NUL behind it; null for what is none. */
BGPDT_API const char *bgpdt_operation_word(unsigned operation);

/* ------------------------------------------------------------------------------------------------ text and values */

/**
 * Text to a value.
 *
 * @param value       receives the value
 * @param value_room  at least the size of the type's values
 * @param error       receives why the type refuses the text, as bgpdt_why tells it; may be null
 */
BGPDT_API int bgpdt_parse(const bgpdt_type *type, const char *text, size_t text_size, uint8_t *value, size_t value_room,
                          bgpdt_error **error);

/**
 * A value to text. An attribute bitmap is listed as a router shows it.
 *
 * @param text       receives the text and a NUL; or the bytes that there are instead, as they stand in memory
 * @param text_room  BGPDT_TEXT_ROOM is enough
 * @param text_size  receives the size without the NUL, also where the room is too small
 * @param error      receives why it cannot be shown; may be null
 */
BGPDT_API int bgpdt_print(const bgpdt_type *type, const uint8_t *value, size_t value_size, char *text, size_t text_room,
                          size_t *text_size, bgpdt_error **error);

/**
 * Why the type refuses a text: found by asking it about texts near that one, in a millisecond or so.
 *
 * @param error  receives the reason; null, and BGPDT_OK, if the text is taken
 */
BGPDT_API int bgpdt_why(const bgpdt_type *type, const char *text, size_t text_size, bgpdt_error **error);

/** Whether the router's Check allows the value. */
BGPDT_API int bgpdt_check(const bgpdt_type *type, const uint8_t *value, size_t value_size, bgpdt_error **error);

/** Reverses the byte order of the value's numbers as the router does. */
BGPDT_API int bgpdt_swap(const bgpdt_type *type, uint8_t *value, size_t value_size, bgpdt_error **error);

/**
 * The router's Compare: unlike bytes may be equal, and some types order no values, or not all.
 *
 * @param order  receives -1, 0 or 1
 */
BGPDT_API int bgpdt_compare(const bgpdt_type *type, const uint8_t *first, size_t first_size, const uint8_t *second,
                            size_t second_size, int *order, bgpdt_error **error);

/**
 * The order in which values are sorted: the router's where it has one, else that of their bytes. It orders all values
 * of a type, and only equal bytes are equal.
 *
 * @param order  receives -1, 0 or 1
 */
BGPDT_API int bgpdt_order(const bgpdt_type *type, const uint8_t *first, size_t first_size, const uint8_t *second,
                          size_t second_size, int *order);

/**
 * The value's fields as JSON: what each is, where it stands, what it means.
 *
 * @param json       receives the text, with a NUL behind it, to be released with bgpdt_free
 * @param json_size  receives its size; may be null
 */
BGPDT_API int bgpdt_explain(const bgpdt_type *type, const uint8_t *value, size_t value_size, char **json,
                            size_t *json_size, bgpdt_error **error);

/**
 * How other BGP speakers read a text, as JSON: the text that was asked about, which is this one or one of the same shape
 * (empty if there is none), and what each reader made of it.
 *
 * @param json       receives the text, with a NUL behind it, to be released with bgpdt_free
 * @param json_size  receives its size; may be null
 */
BGPDT_API int bgpdt_dialects(const bgpdt_type *type, const char *text, size_t text_size, char **json, size_t *json_size,
                             bgpdt_error **error);

/**
 * A field of the value by its name, as people ask for it: an address of either family is one field, and what a type code
 * splits is told in its pieces.
 *
 * @param text       receives what the field says, with a NUL behind it, to be released with bgpdt_free; null if other
 *                   values of the type have such a field, but this one has not
 * @param text_size  receives its size; may be null
 * @return BGPDT_NUMBER for a field that is a number and stands for nothing else
 */
BGPDT_API int bgpdt_field(const bgpdt_type *type, const uint8_t *value, size_t value_size, const char *name,
                          size_t name_size, char **text, size_t *text_size, bgpdt_error **error);

/** A field by its name. */
typedef struct bgpdt_named_field {
    bgpdt_text name; /**< As bgpdt_field takes it. */
    bgpdt_text text; /**< What it says. */
    int32_t code;    /**< BGPDT_NUMBER for a field that is a number and stands for nothing else, else BGPDT_OK. */
} bgpdt_named_field;

/** Fields in the order of their bytes. */
typedef struct bgpdt_fields {
    size_t struct_size;            /**< sizeof(bgpdt_fields), as the library knows it. */
    const bgpdt_named_field *rows; /**< The fields. */
    size_t count;                  /**< How many they are. */
} bgpdt_fields;

/** Releases fields. Null is none. */
BGPDT_API void bgpdt_fields_free(bgpdt_fields *fields);

/**
 * All fields of the value, as bgpdt_field gives them one by one; unused entries of a list are left out.
 *
 * @param fields  receives them, to be released with bgpdt_fields_free
 */
BGPDT_API int bgpdt_fields_of(const bgpdt_type *type, const uint8_t *value, size_t value_size, bgpdt_fields **fields,
                              bgpdt_error **error);

/**
 * The fields that values of the type may have, of whatever kind: without texts, and of a list for as many entries as the
 * type's samples have. One has the code BGPDT_NUMBER that is such a number in every value that has it.
 *
 * @param fields  receives them, to be released with bgpdt_fields_free
 */
BGPDT_API int bgpdt_known_fields(const bgpdt_type *type, bgpdt_fields **fields, bgpdt_error **error);

/** Bytes in hexadecimal to a value: "0x" may stand in front, blanks, ':', '_' and '-' between bytes. */
BGPDT_API int bgpdt_from_hex(const bgpdt_type *type, const char *hex, size_t hex_size, uint8_t *value,
                             size_t value_room, bgpdt_error **error);

/** Turns the value's numbers to this machine's byte order, in which values.h of the plug-in declares its structures. */
BGPDT_API int bgpdt_to_native(const bgpdt_type *type, uint8_t *value, size_t value_size);

/** Turns the value's numbers back from this machine's byte order. */
BGPDT_API int bgpdt_from_native(const bgpdt_type *type, uint8_t *value, size_t value_size);

/* ------------------------------------------------------------------------------------------------ script tables */

/**
 * The value's script table as JSON.
 *
 * @param json       receives the text, with a NUL behind it, to be released with bgpdt_free
 * @param json_size  receives its size; may be null
 */
BGPDT_API int bgpdt_table(const bgpdt_type *type, const uint8_t *value, size_t value_size, char **json,
                          size_t *json_size, bgpdt_error **error);

/** The value that a script table says, which is given as JSON. */
BGPDT_API int bgpdt_read_table(const bgpdt_type *type, const char *json, size_t json_size, uint8_t *value,
                               size_t value_room, bgpdt_error **error);

/**
 * Pushes the value's script table on the stack of an engine, which must be the Lua 5.4 that the library is linked to.
 * Nothing is pushed on a failure.
 */
BGPDT_API int bgpdt_push_lua(const bgpdt_type *type, const uint8_t *value, size_t value_size, struct lua_State *lua,
                             bgpdt_error **error);

/** The value that the script table on top of an engine's stack says; it stays there. */
BGPDT_API int bgpdt_read_lua(const bgpdt_type *type, struct lua_State *lua, uint8_t *value, size_t value_room,
                             bgpdt_error **error);

/* ------------------------------------------------------------------------------------------------ many at a time */

/**
 * A column of texts as columnar engines lay it out: the bytes of all texts, and where each begins; row i goes from
 * offset i to offset i + 1. Of bitmaps, row i is bit i % 8 of byte i / 8.
 */
typedef struct bgpdt_column {
    size_t struct_size;      /**< sizeof(bgpdt_column) */
    size_t count;            /**< Of rows. */
    const void *offsets;     /**< count + 1 of them, uint32_t or uint64_t, aligned, none less than the one before. */
    size_t offset_size;      /**< 4 or 8. */
    const char *bytes;       /**< May be null where all texts are empty. */
    size_t bytes_size;       /**< At least the last offset. */
    const uint8_t *validity; /**< The bits of the rows that there are; null: all. */
} bgpdt_column;

/** The rows that were refused. */
typedef struct bgpdt_refused {
    size_t struct_size; /**< sizeof(bgpdt_refused) */
    size_t count;       /**< Receives how many they were. */
    size_t *rows;       /**< Receives the numbers of the first of them; may be null. */
    size_t room;        /**< For how many. */
} bgpdt_refused;

/**
 * Parses a column. No memory is taken for a row. What is wrong with a refused row tells bgpdt_why.
 *
 * @param values       receives the values, one behind the other; zeros for a row without one
 * @param values_room  count times the size of the type's values, or more
 * @param validity     receives the bits of the rows that have a value; may be null
 * @param validity_room  a byte for eight rows, or more
 * @param refused      receives the rows that there are and that the type refuses; may be null
 */
BGPDT_API int bgpdt_parse_many(const bgpdt_type *type, const bgpdt_column *column, uint8_t *values, size_t values_room,
                               uint8_t *validity, size_t validity_room, bgpdt_refused *refused);

/** Where a column of texts is written. */
typedef struct bgpdt_column_room {
    size_t struct_size;   /**< sizeof(bgpdt_column_room) */
    void *offsets;        /**< Receives one offset more than there are rows. */
    size_t offset_size;   /**< 4 or 8. */
    char *bytes;          /**< Receives the bytes of all texts. */
    size_t bytes_room;    /**< For how many. */
    uint8_t *validity;    /**< Receives the bits of the rows that have a text; may be null. */
    size_t validity_room; /**< A byte for eight rows, or more. */
} bgpdt_column_room;

/**
 * Prints values to a column. No memory is taken for a row.
 *
 * @param values       the values, one behind the other
 * @param values_size  count times the size of the type's values
 * @param validity     the bits of the rows that there are; null: all
 * @param printed      receives how many rows were printed: all, or those that the room for the bytes took
 * @param refused      receives the rows that there are and that the type does not print; may be null
 * @return BGPDT_NO_ROOM where the bytes of the next row have no room; what was printed by then is complete
 */
BGPDT_API int bgpdt_print_many(const bgpdt_type *type, const uint8_t *values, size_t values_size, size_t count,
                               const uint8_t *validity, const bgpdt_column_room *room, size_t *printed,
                               bgpdt_refused *refused);

#ifdef __cplusplus
}
#endif
