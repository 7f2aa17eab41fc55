"""The components of a description."""

from boardtool import limits
from boardtool.cursor import Cursor, suggestion
from boardtool.fields import read_name, read_panel_text
from boardtool.hardware import read_hardware, read_needed_processor
from boardtool.model import Component, InfoLine
from boardtool.points import Canvas, read_leader, read_outline, read_point

REQUIRED = ("name", "category", "outline", "leader", "callout", "marker")
OPTIONAL = (
    "align",
    "token",
    "selectable",
    "special_group",
    "style",
    "status",
    "info",
    "hardware",
    "needs-processor",
)


def read_components(
    cursor: Cursor | None, canvas: Canvas, style_names: list[str]
) -> tuple[Component, ...]:
    """All components; problems are reported, and whoever asks must look for them."""
    items = (cursor.items() if cursor else None) or []
    if cursor is not None and len(items) > limits.COMPONENTS:
        cursor.report(f"{len(items)} components, at most {limits.COMPONENTS} are allowed")
    components: list[Component] = []
    lines: dict[str, int] = {}
    for number, item in enumerate(items):
        _remember_name(number, item)
        component = _read_component(item, canvas, style_names)
        if component is None:
            continue
        if component.name in lines:
            first = lines[component.name]
            item.report(f"the name {component.name!r} is taken by the component in line {first}")
        lines.setdefault(component.name, item.line)
        components.append(component)
    return tuple(components)


def _remember_name(number: int, component: Cursor) -> None:
    name = component.peek("name")
    if name:
        component.problems.names[number] = name


def _read_component(cursor: Cursor, canvas: Canvas, style_names: list[str]) -> Component | None:
    fields = cursor.fields(REQUIRED, OPTIONAL)
    if any(name not in fields for name in REQUIRED):
        return None
    name = read_name(fields["name"])
    category = fields["category"].choice(limits.CATEGORIES)
    outline = read_outline(fields["outline"], canvas)
    leader = read_leader(fields["leader"], canvas)
    callout = fields["callout"].choice(limits.CALLOUT_SIDES)
    marker = read_point(fields["marker"], canvas)
    align = _choice(fields, "align", limits.ALIGNMENTS, "center")
    status = _choice(fields, "status", limits.STATUSES, "available")
    token = fields["token"].integer(0, limits.WORD) if "token" in fields else 0
    selectable = fields["selectable"].boolean() if "selectable" in fields else True
    special = fields["special_group"].boolean() if "special_group" in fields else False
    style = _read_style_choice(fields.get("style"), style_names)
    info = _read_info(fields.get("info"))
    if "hardware" in fields and "status" in fields:
        fields["status"].report("stands beside 'hardware', which tells the status; keep one")
    hardware = read_needed_processor(fields.get("needs-processor"))
    hardware += read_hardware(fields.get("hardware"))
    if "needs-processor" in fields and "hardware" not in fields:
        fields["needs-processor"].report("needs 'hardware' beside it")
    if name is None:
        return None
    return Component(
        name=name,
        category=category or 0,
        outline=outline,
        leader=leader,
        callout=callout or 0,
        align=align or 0,
        marker=marker or (0, 0),
        token=token or 0,
        selectable=bool(selectable),
        special_group=bool(special),
        style=style,
        status=status or 0,
        info=info,
        hardware=hardware,
    )


def _choice(
    fields: dict[str, Cursor], name: str, values: dict[str, int], default: str
) -> int | None:
    return fields[name].choice(values) if name in fields else values[default]


def _read_style_choice(cursor: Cursor | None, names: list[str]) -> int:
    if cursor is None or not names:  # Without names, the styles are what is wrong.
        return 0
    name = cursor.text(limits.WORD)
    if name is None:
        return 0
    if name not in names:
        cursor.report(f"there is no style {name!r}{suggestion(name, names)}")
        return 0
    return names.index(name)


def _read_info(cursor: Cursor | None) -> tuple[InfoLine, ...]:
    items = (cursor.items() if cursor else None) or []
    if cursor is not None and len(items) > limits.INFO_LINES:
        cursor.report(f"{len(items)} lines, at most {limits.INFO_LINES} are allowed")
    return tuple(_read_info_line(item) for item in items)


def _read_info_line(cursor: Cursor) -> InfoLine:
    fields = cursor.fields(("value",), ("kind", "label"))
    kind = _choice(fields, "kind", limits.INFO_KINDS, "description")
    label = read_panel_text(fields["label"], limits.LABEL) if "label" in fields else ""
    value = read_panel_text(fields["value"], limits.VALUE) if "value" in fields else ""
    return InfoLine(kind=kind or 0, label=label or "", value=value or "")
