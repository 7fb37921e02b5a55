"""gdb's views of the library's lists, papers and tasks.

    (gdb) source PREFIX/share/TvlUtl/debugger/tvlutl_gdb.py
    (gdb) print list            # a WGList: its elements
    (gdb) print paper           # a PaperTypeInformation: name and size
    (gdb) print *task           # a task (set print object on): title and how far each level is
    (gdb) tvl-list handle       # the elements of a list of ListMan.h, which a handle alone does not tell
"""
import gdb

SHOWN_BYTES = 16


def text_of(string):
    """The characters of a TvlString, whether or not gdb has views of the standard library."""
    held = string["m_text"]
    return held["_M_dataplus"]["_M_p"].string(length=int(held["_M_string_length"]))


def hex_bytes(pointer, size):
    data = gdb.selected_inferior().read_memory(int(pointer), min(size, SHOWN_BYTES)) if size > 0 else b""
    return bytes(data).hex(" ") + (" ..." if size > SHOWN_BYTES else "")


class StringPrinter:
    """TvlString."""

    def __init__(self, value):
        self.value = value

    def to_string(self):
        return '"' + text_of(self.value) + '"'


class WGListPrinter:
    """WGList: a free slot is shown as such."""

    def __init__(self, value):
        self.value = value

    def to_string(self):
        header = f", header of {int(self.value['headerSize'])} bytes" if int(self.value["header"]) else ""
        return f"WGList of {int(self.value['count'])} slots{header}"

    def children(self):
        for index in range(int(self.value["count"])):
            slot = self.value["elements"][index]
            size = int(slot["size"])
            shown = f"{size} bytes: {hex_bytes(slot['data'], size)}" if int(slot["used"]) else "free"
            yield f"[{index}]", shown


class PaperPrinter:
    """PaperTypeInformation. 10000 tenths of a micron make a millimetre."""

    def __init__(self, value):
        self.value = value

    def to_string(self):
        width, height = (int(self.value[side]) / 10000 for side in ("Width", "Height"))
        hidden = ", hidden" if self.value["Hidden"] else ""
        custom = f", custom {int(self.value['CustomId'])}" if int(self.value["CustomId"]) else ""
        return f'"{text_of(self.value["DisplayName"])}" {width:.10g} x {height:.10g} mm{custom}{hidden}'


def elements(vector):
    """The elements of a std::vector."""
    begin, end = vector["_M_impl"]["_M_start"], vector["_M_impl"]["_M_finish"]
    return [begin[at] for at in range(int(end - begin))]


class TaskPrinter:
    """TvlUtl::TaskProgress: how far each level is, from the root to the innermost."""

    def __init__(self, value):
        self.value = value

    def to_string(self):
        marks = [name for name in ("cancelled", "failed") if self.value["m_" + name]]
        levels = " > ".join(f"{int(level['doneUnits'])}/{int(level['totalUnits'])}" for level in elements(self.value["m_levels"]))
        return f'"{text_of(self.value["m_displayName"])}" {levels}' + "".join(f", {mark}" for mark in marks)


class ListCommand(gdb.Command):
    """tvl-list HANDLE: the elements of a list of ListMan.h."""

    def __init__(self):
        super().__init__("tvl-list", gdb.COMMAND_DATA)

    def invoke(self, argument, from_tty):
        memory = gdb.parse_and_eval(argument)
        block = memory["data"]
        if not int(block):
            raise gdb.GdbError("the handle has no block")
        word = gdb.lookup_type("unsigned int")
        total, count, table = (int(block.cast(word.pointer())[at]) for at in range(3))
        print(f"LIST of {count} elements in {total} bytes")
        byte = gdb.lookup_type("unsigned char").pointer()
        offsets = (block.cast(byte) + table).cast(word.pointer())
        for index in range(count):
            begin, end = int(offsets[index]), int(offsets[index + 1])
            print(f"[{index}] {end - begin} bytes: {hex_bytes(block.cast(byte) + begin, end - begin)}"
                  if end > begin else f"[{index}] free")


PRINTERS = {
    "TvlStringT<wchar_t>": StringPrinter,
    "WGList": WGListPrinter,
    "PaperTypeInformation": PaperPrinter,
    "TvlUtl::TaskProgress": TaskPrinter,
}


def find_printer(value):
    printer = PRINTERS.get(value.type.unqualified().strip_typedefs().name)
    return printer(value) if printer else None


gdb.pretty_printers.append(find_printer)
ListCommand()
