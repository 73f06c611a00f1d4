"""Calls in any order and with any arguments: a document may refuse them, but nothing else happens."""

import array
import datetime
import io
import random
import warnings

import scrivalen
from support import DocumentTest

REFUSALS = (scrivalen.Error, TypeError, ValueError)
ARGUMENTS = [
    None, True, 0, 1, 2, 7, -1, 2**40, 2**70, 1.5, float("nan"), "", "text", "#id", "left", "strong", "html", "a\0b",
    "\ud800", b"bytes", (), (1, "a"), [1, 2], [("a", 1), ("b", 2)], ["a", None], {"a": [1, 2]}, iter([(1,), (2,)]),
    array.array("d", [1, 2]), memoryview(b"abcd"), datetime.date(2024, 1, 1), datetime.datetime(2024, 1, 1), object(),
    scrivalen.Column("a"), scrivalen.Values(array.array("q", [1, 2]), "time"), io.BytesIO(), len, ValueError
]
NAMES = [
    "align", "alternative", "background", "color", "columns", "done", "first", "header", "id", "language", "name",
    "ordered", "span", "text", "tight", "title", "width"
]


def functions_of(thing):
    return [name for name in dir(thing) if not name.startswith("_") and callable(getattr(thing, name))]


class Misuse(DocumentTest):
    def call(self, choice, things):
        """Calls some function of some part, and keeps the part that it may begin."""
        thing = choice.choice(things[:1] + things[-4:])
        name = choice.choice(functions_of(thing) + ["__enter__", "__exit__"])
        # Files would be written where the tests run.
        if name in ("add_file", "image") or (name in ("abandon", "close", "__exit__") and choice.random() < 0.98):
            return
        arguments = choice.choices(ARGUMENTS, k=3 if name == "__exit__" else choice.choice((0, 1, 1, 2, 3)))
        named = {choice.choice(NAMES): choice.choice(ARGUMENTS)} if choice.random() < 0.2 else {}
        try:
            begun = getattr(thing, name)(*arguments, **named)
        except REFUSALS:
            return
        if isinstance(begun, scrivalen.Part):
            things.append(begun)

    def test_calls_in_any_order_are_refused_or_taken(self):
        taken = 0
        for seed in range(60):
            choice = random.Random(seed)
            streams = [io.BytesIO(), io.BytesIO()]
            doc = scrivalen.Document((streams[0], "html"), (streams[1], "text"))
            things = [doc]
            with warnings.catch_warnings():
                warnings.simplefilter("ignore")
                for _ in range(choice.choice((20, 200, 400))):
                    self.call(choice, things)
                    if len(things) > 1 and choice.random() < 0.3:
                        things.pop()
                try:
                    doc.close()
                except REFUSALS:
                    continue
            taken += len(streams[0].getvalue())
        self.assertGreater(taken, 10000)

    def test_every_function_is_refused_after_the_end(self):
        with scrivalen.Document((io.BytesIO(), "text")) as doc:
            section = doc.section()
            items = section.list()
            item = items.item()
            parts = [doc, section, items, item, item.strong()]
        arguments = {"heading": (1,), "item": ("text",), "link": ("#a",), "raw": ("html", ""), "set": ("title", "x"),
                     "span": ("strong",), "language": ("de",), "sized": (1,), "colored": ("red",), "anchor": ("a",),
                     "image": (b"",), "text": ("text",), "add_file": ("a.txt",), "add_stream": (io.BytesIO(), "text"),
                     "set_progress": (None,)}
        for part in parts:
            for name in functions_of(part):
                with self.subTest(part=type(part).__name__, name=name):
                    if name in ("end", "close", "abandon"):
                        continue
                    with self.assertRaises(scrivalen.MisuseError):
                        getattr(part, name)(*arguments.get(name, ()))
