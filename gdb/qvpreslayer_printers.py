"""Printers of gdb for texts, pointers, bags and typed values.

gdb loads them by itself where the libraries are installed under its own prefix. Elsewhere:

    (gdb) source .../share/qvpreslayer/gdb/qvpreslayer_printers.py

They read memory and call nothing in the program, so that they work on core files too. What they depend on:

    TString           TextBuffer.h: units in place and a tag behind them, or data and size
    RefCntPtr         boost::intrusive_ptr::px and RefCntObjectNonVirtualBase::m_count
    ValParameter      m_value
    bags              BaseParameters::m_parameters and ParameterTable::m_entries, m_size and m_tree
    DataValue         m_value (std::variant of libstdc++), m_type, m_precision, m_scale
    shared texts      the entries of IndirectString.cpp and Collation.cpp
    names in bags     the registry's tables, once a registry is published

Without debug information of the libraries (the package libqvpreslayer0-dbgsym) there are TString, names and identifiers,
DataValue but for texts and tuples, and ValParameter: bags and what RefCntPtr points to are classes of the libraries.

What cannot be read is shown as such; nothing raises an error. A password is shown as its mask.
"""
import re

import gdb
import gdb.printing

UNREADABLE = "<unreadable>"
FAILURES = (gdb.error, gdb.MemoryError, RuntimeError, TypeError)


class NamesParameter(gdb.Parameter):
    """Whether bags show the registered names of parameters beside their identifiers.

    Names are read from the registry's tables; those of a namespace are there once it has been looked into."""

    show_doc = "Show whether names of parameters are printed in bags."
    set_doc = "Set whether names of parameters are printed in bags."

    def __init__(self):
        super().__init__("print qv-names", gdb.COMMAND_DATA, gdb.PARAM_BOOLEAN)
        self.value = True

    def get_set_string(self):
        return ""

    def get_show_string(self, value):
        return "Printing names of parameters in bags is " + value + "."


# --- what the standard library and boost look like ---------------------------------------------------------------


def vector_length(vector):
    impl = vector["_M_impl"]
    length = int(impl["_M_finish"] - impl["_M_start"])
    if length < 0 or impl["_M_finish"] != impl["_M_start"] + length:
        raise RuntimeError("no vector")
    return length


def vector_elements(vector):
    start = vector["_M_impl"]["_M_start"]
    for position in range(vector_length(vector)):
        yield (start + position).dereference()


def map_length(tree_map):
    return int(tree_map["_M_t"]["_M_impl"]["_M_node_count"])


def map_elements(tree_map):
    """The pairs of a std::map, in order."""
    tree = tree_map["_M_t"]
    pair = tree_map.type.strip_typedefs()
    pair = gdb.lookup_type("std::pair<%s const, %s>" % (pair.template_argument(0), pair.template_argument(1)))
    node_type = gdb.lookup_type("std::_Rb_tree_node<%s >" % pair.name).pointer()
    header = tree["_M_impl"]["_M_header"]
    node = header["_M_left"]
    while node != header.address:
        yield node.cast(node_type)["_M_storage"].address.cast(pair.pointer()).dereference()
        if int(node["_M_right"]) != 0:
            node = node["_M_right"]
            while int(node["_M_left"]) != 0:
                node = node["_M_left"]
        else:
            parent = node["_M_parent"]
            while node == parent["_M_right"]:
                node, parent = parent, parent["_M_parent"]
            if node["_M_right"] != parent:
                node = parent


def deque_elements(deque):
    impl = deque["_M_impl"]
    current = impl["_M_start"]["_M_cur"]
    end_of_node = impl["_M_start"]["_M_last"]
    node = impl["_M_start"]["_M_node"]
    per_node = int(end_of_node - impl["_M_start"]["_M_first"])
    while current != impl["_M_finish"]["_M_cur"]:
        yield current.dereference()
        current += 1
        if current == end_of_node:
            node += 1
            current = node.dereference()
            end_of_node = current + per_node


def unique_target(pointer):
    """The plain pointer inside a std::unique_ptr with the usual deleter, which takes no room."""
    plain = pointer.type.strip_typedefs().template_argument(0).pointer()
    return pointer.address.cast(plain.pointer()).dereference()


def intrusive_target(pointer):
    return pointer["m_ptr"]["px"]


def is_complete(pointer):
    """Whether more is known of what a pointer points to than its name: compilers describe a class where its first
    virtual function is, so that those of a library without debug information are known by name only."""
    return bool(pointer.type.strip_typedefs().target().strip_typedefs().fields())


def as_dynamic(value):
    """The object as its own class, where the program's type information tells."""
    try:
        return value.cast(value.dynamic_type)
    except FAILURES:
        return value


# --- texts -------------------------------------------------------------------------------------------------------

ON_HEAP = 0xFFFF
LONGEST_IN_PLACE = 14


def text_units(text):
    """The code units of a TString: where they start, and how many there are."""
    buffer = text["m_text"]
    units = buffer["m_units"]
    tag = int(units[15])
    if tag == ON_HEAP:
        return buffer["m_heap"]["data"], int(buffer["m_heap"]["size"])
    if tag > LONGEST_IN_PLACE:
        raise RuntimeError("no text")
    return units, tag


def text_of(text, limit=200):
    """A TString as a text of Python, cut after so many units."""
    units, length = text_units(text)
    codes = [int(units[i]) & 0xFFFF for i in range(min(length, limit))]
    decoded = b"".join(code.to_bytes(2, "little") for code in codes).decode("utf-16-le", "replace")
    return decoded + ("..." if length > limit else "")


class TextPrinter:
    """A TString, as gdb prints texts of char16_t: quoted, escaped and cut after "print elements" units."""

    def __init__(self, value):
        text_units(value)  # what is no text yet is left to gdb
        self.value = value

    def to_string(self):
        units, length = text_units(self.value)
        if units.type.code == gdb.TYPE_CODE_ARRAY:
            if units.address is None:
                return text_of(self.value)
            units = units.address.cast(units.type.target().pointer())
        return units.lazy_string(length=length)

    def display_hint(self):
        return "string"


class NamePrinter:
    """QualifiedName and FieldName: their text."""

    def __init__(self, value):
        self.value = value

    def to_string(self):
        return TextPrinter(self.value["m_fullValue"]).to_string()

    def display_hint(self):
        return "string"


class PasswordPrinter:
    def __init__(self, value):
        pass

    def to_string(self):
        return "********"


class UuidPrinter:
    def __init__(self, value):
        self.value = value

    def to_string(self):
        elements = self.value["m_bytes"]["_M_elems"]
        digits = "".join("%02x" % int(elements[i]) for i in range(16))
        return "-".join((digits[:8], digits[8:12], digits[12:16], digits[16:20], digits[20:]))


def shared_text(indirect):
    """The text of an IndirectString, or None where the library has no debug information."""
    entry = indirect["m_entry"]["px"]
    if int(entry) == 0:
        return ""
    if not is_complete(entry):
        return None
    return text_of(entry["text"])


class SharedTextPrinter:
    """IndirectString: its text."""

    def __init__(self, value):
        self.value = value

    def to_string(self):
        text = shared_text(self.value)
        return "<text: no debug information of libqvcore>" if text is None else text

    def display_hint(self):
        return None if shared_text(self.value) is None else "string"


def collation_name(collation):
    entry = collation["m_entry"]["px"]
    if int(entry) == 0:
        return "unknown"
    if not is_complete(entry):
        return None
    return text_of(entry["name"])


class CollationPrinter:
    def __init__(self, value):
        self.value = value

    def to_string(self):
        return "collation " + (collation_name(self.value) or "<no debug information of libqvcore>")


# --- pointers ----------------------------------------------------------------------------------------------------


class PointerPrinter:
    """RefCntPtr: the number of references and the object."""

    def __init__(self, value):
        self.value = value
        self.target = intrusive_target(value)

    def to_string(self):
        if int(self.target) == 0:
            return "empty RefCntPtr"
        if not is_complete(self.target):
            return "RefCntPtr <no debug information of %s>" % self.target.dereference().type.name
        try:
            count = int(as_dynamic(self.target.dereference())["m_count"]["_M_i"])
        except FAILURES:
            return "RefCntPtr"
        return "RefCntPtr, use count %d" % count

    def children(self):
        if int(self.target) != 0 and is_complete(self.target):
            yield "*", as_dynamic(self.target.dereference())


# --- names of parameters -----------------------------------------------------------------------------------------


class Names:
    """The names of parameters, read from the tables of the published registry once for each stop of the program."""

    def __init__(self):
        self.known = {}
        self.loaded = False

    def forget(self, *_):
        self.known = {}
        self.loaded = False

    def find(self, identifier):
        if not gdb.parameter("print qv-names"):
            return None
        if not self.loaded:
            self.loaded = True
            try:
                self.load()
            except FAILURES:
                pass
        return self.known.get(identifier)

    def load(self):
        """Where ranges overlap an identifier has one owner, which the segments tell."""
        symbol = gdb.lookup_static_symbol("(anonymous namespace)::gm_registryInstance")
        if symbol is None:
            return
        registry = symbol.value()["_M_b"]["_M_p"]
        if int(registry) == 0:
            return
        impl = unique_target(registry["m_impl"]).dereference()
        tables = {}
        for segment in vector_elements(impl["segments"]["m_segments"]):
            owner = segment["owner"]
            if int(owner) not in tables:
                tables[int(owner)] = {
                    int(record["id"]): text_of(record["verboseName"])
                    for record in deque_elements(owner["m_namespace"]["m_records"])
                }
            first, last = int(segment["first"]), int(segment["last"])
            for identifier, name in tables[int(owner)].items():
                if first <= identifier <= last:
                    self.known[identifier] = name


NAMES = Names()


# --- bags --------------------------------------------------------------------------------------------------------


def table_length(table):
    tree = unique_target(table["m_tree"])
    return int(table["m_size"]) + (map_length(tree.dereference()) if int(tree) != 0 else 0)


def table_entries(table):
    """The identifiers and pointers of a ParameterTable, upwards by identifier."""
    for position in range(int(table["m_size"])):
        entry = (table["m_entries"] + position).dereference()
        yield int(entry["id"]), entry["value"]
    tree = unique_target(table["m_tree"])
    if int(tree) != 0:
        for entry in map_elements(tree.dereference()):
            yield int(entry["first"]), entry["second"]


def held_value(pointer):
    """What a RefCntPtr<IParameter> holds: the value inside a ValParameter, else the object."""
    target = intrusive_target(pointer)
    if int(target) == 0:
        return pointer
    holder = as_dynamic(target.dereference())
    if re.match(r"ValParameter<.*>$", holder.type.name or ""):
        return holder["m_value"]
    return holder


def bag_entries(bag):
    """Labels and values of a bag's parameters and cache entries; what cannot be read ends the list."""
    for member, mark in (("m_parameters", ""), ("m_cacheParameters", "cache ")):
        try:
            for identifier, pointer in table_entries(bag[member]):
                name = NAMES.find(identifier)
                label = "%s%d" % (mark, identifier) if name is None else "%s%d %s" % (mark, identifier, name)
                yield "[" + label + "]", held_value(pointer)
        except FAILURES:
            yield "[" + mark + "...]", UNREADABLE


class BagPrinter:
    """Any class derived from BaseParameters."""

    def __init__(self, value):
        self.value = value

    def to_string(self):
        try:
            count = table_length(self.value["m_parameters"])
        except FAILURES:
            return "%s %s" % (self.value.type.name, UNREADABLE)
        return "%s with %d parameter%s" % (self.value.type.name, count, "" if count == 1 else "s")

    def children(self):
        return bag_entries(self.value)


class HolderPrinter:
    """ValParameter: its value."""

    def __init__(self, value):
        self.value = value

    def to_string(self):
        return self.value.type.strip_typedefs().name

    def children(self):
        yield "value", self.value["m_value"]


# --- typed values ------------------------------------------------------------------------------------------------

TYPE_NAMES = ("integer", "real", "string", "date-time", "boolean", "date", "tuple", "spatial", "unknown")
CONTENTS = (None, "Int64", "double", "bool", "Date", "DateTime", "IndirectString", "RefCntPtr<Tuple>", "Spatial")
UNSET = 255


def date_text(date):
    day, month, year = date["_M_d"]["_M_d"], date["_M_m"]["_M_m"], date["_M_y"]["_M_y"]
    return "%04d-%02d-%02d" % (int(year), int(month), int(day))


def time_text(time):
    nanoseconds = int(time["__r"])
    seconds, fraction = divmod(nanoseconds, 10**9)
    text = "%02d:%02d:%02d" % (seconds // 3600, seconds // 60 % 60, seconds % 60)
    return text + (".%09d" % fraction).rstrip("0") if fraction else text


class TypedValuePrinter:
    """DataValue: its type and content; the values of a tuple below it."""

    def __init__(self, value):
        self.value = value
        self.type = TYPE_NAMES[int(value["m_type"])] if int(value["m_type"]) < len(TYPE_NAMES) else UNREADABLE
        self.index = int(value["m_value"]["_M_index"])

    def content(self):
        content = gdb.lookup_type(CONTENTS[self.index])
        return self.value["m_value"].address.cast(content.pointer()).dereference()

    def labels(self):
        labels = [
            "%s %d" % (name, int(self.value[member]))
            for name, member in (("precision", "m_precision"), ("scale", "m_scale"))
            if int(self.value[member]) != UNSET
        ]
        return " (" + ", ".join(labels) + ")" if labels else ""

    def describe(self):
        if self.index == 0:
            return "null " + self.type
        content = self.content()
        if self.index == 2:
            return "real %s%s" % (content.format_string(), self.labels())
        if self.index == 4:
            return "date " + date_text(content)
        if self.index == 5:
            return "date-time %s %s" % (date_text(content["m_date"]), time_text(content["m_timeOfDay"]))
        if self.index == 6:
            text = shared_text(content)
            return "string " + ("<no debug information of libqvcore>" if text is None else '"%s"' % text)
        if self.index == 7:
            target = intrusive_target(content)
            if not is_complete(target):
                return "tuple <no debug information of libqvcore>"
            return "tuple of %d" % vector_length(target["m_values"])
        if self.index == 8:
            return "spatial"
        return "%s %s" % (self.type, content.format_string())

    def to_string(self):
        try:
            return self.describe()
        except FAILURES:
            return "%s %s" % (self.type, UNREADABLE)

    def children(self):
        if self.index == 7 and is_complete(intrusive_target(self.content())):
            for position, element in enumerate(vector_elements(intrusive_target(self.content())["m_values"])):
                yield "[%d]" % position, element


# --- finding the printer of a type -------------------------------------------------------------------------------

PRINTERS = {
    "qvsys": {r"RefCntPtr<.*>": PointerPrinter},
    "qvcore": {
        r"TString": TextPrinter,
        r"QualifiedName|FieldName": NamePrinter,
        r"PasswordString": PasswordPrinter,
        r"TUUID": UuidPrinter,
        r"IndirectString": SharedTextPrinter,
        r"Collation": CollationPrinter,
        r"DataValue": TypedValuePrinter,
    },
    "qvpreslayer": {r"ValParameter<.*>": HolderPrinter},
}


def is_derived_from(type_, base):
    return any(
        field.is_base_class and (field.type.name == base or is_derived_from(field.type.strip_typedefs(), base))
        for field in type_.fields()
    )


class Lookup(gdb.printing.PrettyPrinter):
    """The printers of one library."""

    def __init__(self, library):
        super().__init__(library)
        self.patterns = [(re.compile(pattern + "$"), printer) for pattern, printer in PRINTERS[library].items()]
        self.has_bags = library == "qvpreslayer"
        self.bag_types = {}

    def is_bag(self, type_):
        name = type_.name
        if name not in self.bag_types:
            self.bag_types[name] = name == "BaseParameters" or is_derived_from(type_, "BaseParameters")
        return self.bag_types[name]

    def __call__(self, value):
        type_ = value.type.strip_typedefs()
        if type_.code in (gdb.TYPE_CODE_REF, gdb.TYPE_CODE_RVALUE_REF):
            value = value.referenced_value()
            type_ = value.type.strip_typedefs()
        if type_.code != gdb.TYPE_CODE_STRUCT or not type_.name:
            return None
        try:
            if self.has_bags and type_.name in ("IParameters", "IParameter"):
                value = as_dynamic(value)
                type_ = value.type.strip_typedefs()
            for pattern, printer in self.patterns:
                if pattern.match(type_.name):
                    return printer(value)
            if self.has_bags and self.is_bag(type_):
                return BagPrinter(value)
        except FAILURES:
            pass
        return None


def register(objfile=None):
    """For one of the libraries its own printers, for anything else, also for a program as a whole, all of them."""
    found = re.match(r"lib(qv\w+)\.", objfile.filename.rpartition("/")[2]) if objfile else None
    libraries = [found.group(1)] if found and found.group(1) in PRINTERS else PRINTERS
    for library in libraries:
        gdb.printing.register_pretty_printer(objfile, Lookup(library), replace=True)


NamesParameter()
for event in (gdb.events.stop, gdb.events.exited, gdb.events.new_objfile, gdb.events.memory_changed):
    event.connect(NAMES.forget)

if __name__ == "__main__":  # sourced by hand
    register()
