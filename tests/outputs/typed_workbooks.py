"""Writes workbooks of random values and has openpyxl and LibreOffice read them back, cell by cell.

  typed_workbooks.py FOLDER WORKBOOKS SHEETS

The types that are expected follow from a description of the rule in this file's own words. LibreOffice exports what it
shows, in an English locale, so the text that a person sees is compared with the text that was given. A PDF of numbers
that grow after the columns got their widths shows that no cell has "###" instead.
"""

import csv
import datetime
import decimal
import glob
import os
import random
import re
import subprocess
import sys

import openpyxl
from openpyxl.utils.escape import unescape

import scrivalen

NUMBER = re.compile(r"-?(0|[1-9]\d{0,14})(\.\d{1,9})?", re.ASCII)
DATE = re.compile(r"\d{4}-\d\d-\d\d", re.ASCII)

HOSTILE = ["007", "+7", "1e5", "12%", "1,234.50", "=1+1", "-0", "-0.0", "@SUM(A1)", "_x0041_", "_x005F_", "_xZZZZ_", "_x0a_", "_x000041_",
           "<b>&amp;</b>", "]]>", "TRUE", "#N/A", " 1", "1 ", "\u202e12", "1.", ".5", "0x10", "1900-02-29",
           "1900-01-01", "2023-02-30", "12:30", "3/4", "1E3", "\u0661\u0662", "x" * 500, "a\nb", "\U0001f600 \u00e4",
           "9" * 15, "9" * 16, "0.1234567891", "123456789.123456", "1234567890.123456", "'5", "-1+2", "\t1"]


def is_number(text):
    digits = text.replace("-", "").replace(".", "").lstrip("0")
    return bool(NUMBER.fullmatch(text)) and len(digits) <= 15 and not (text[0] == "-" and not digits)


def is_date(text):
    try:
        return bool(DATE.fullmatch(text)) and datetime.date.fromisoformat(text) >= datetime.date(1900, 3, 1)
    except ValueError:
        return False


def random_text(source):
    kind = source.randrange(5)
    if kind == 0:
        return source.choice(HOSTILE)
    if kind == 1:
        return str(source.randrange(-10 ** source.randrange(1, 17), 10 ** 16))
    if kind == 2:
        return "%.*f" % (source.randrange(0, 11), source.uniform(-10 ** source.randrange(0, 9), 10 ** 9))
    if kind == 3:
        return "%04d-%02d-%02d" % (source.randrange(1800, 2200), source.randrange(1, 13), source.randrange(1, 32))
    return "".join(source.choice("abc 012.-+,<&\u00e4\u4e2d_x") for _ in range(source.randrange(1, 12)))


def random_value(source):
    kind = source.randrange(8)
    if kind == 0:
        return source.randrange(-10 ** source.randrange(1, 17), 10 ** 16)
    if kind == 1:
        return round(source.uniform(-1e6, 1e6), source.randrange(0, 6))
    if kind == 2:
        return decimal.Decimal(source.randrange(-10 ** 14, 10 ** 14)).scaleb(-source.randrange(1, 10))
    if kind == 3:
        return datetime.date.fromordinal(source.randrange(650000, 800000))
    if kind == 4:
        return datetime.datetime(1970, 1, 1) + datetime.timedelta(seconds=source.randrange(-10 ** 9, 4 * 10 ** 9))
    if kind == 5:
        return source.random() < 0.5
    return random_text(source)


def shown(value):
    """The text that a person should see; the model's plain form of a value."""
    if isinstance(value, bool):
        return "TRUE" if value else "FALSE"
    if isinstance(value, datetime.datetime):
        return value.strftime("%Y-%m-%d %H:%M:%S")
    if isinstance(value, float):
        return re.sub(r"\.0$", "", repr(value))
    if isinstance(value, decimal.Decimal):
        return "{:f}".format(value)
    return str(value).replace("\t", " ")


def expected(value):
    """What openpyxl should find: a value of the type that the cell should have."""
    text = shown(value)
    if isinstance(value, bool):
        return value
    if isinstance(value, datetime.date):
        day = datetime.date(value.year, value.month, value.day)
        return datetime.datetime.fromisoformat(text) if day >= datetime.date(1900, 3, 1) else text
    if isinstance(value, int):
        return value if abs(value) < 10 ** 15 else text
    if isinstance(value, (float, decimal.Decimal)):
        return float(value)
    if is_number(text):
        return float(text)
    return datetime.datetime.fromisoformat(text) if is_date(text) else text


def write(path, source, sheets):
    content = []
    with scrivalen.Document(path) as document:
        for number in range(sheets):
            columns = source.randrange(1, 9)
            rows = [[random_value(source) for _ in range(columns)] for _ in range(source.randrange(1, 20))]
            with document.section("S%d" % number) as section, section.table(columns) as table:
                table.rows(rows)
            content.append(rows)
    return content


def differs(found, wanted):
    if isinstance(found, datetime.datetime) and isinstance(wanted, datetime.datetime):
        return abs((found - wanted).total_seconds()) > 0.001
    if isinstance(wanted, str) or isinstance(found, str) or isinstance(wanted, bool):
        return type(found) is not type(wanted) or found != wanted
    return found != wanted


def check_with_openpyxl(path, content):
    book = openpyxl.load_workbook(path)
    cells = 0
    for sheet, rows in zip(book.worksheets, content):
        for number, row in enumerate(rows, 1):
            for column, value in enumerate(row, 1):
                found = sheet.cell(number, column).value
                found = unescape(found) if isinstance(found, str) else found
                if differs(found, expected(value)):
                    sys.exit("%s %s!%d,%d: %r became %r" % (path, sheet.title, number, column, value, found))
                cells += 1
    return cells


def convert(path, target):
    folder = os.path.dirname(path)
    subprocess.run(["soffice", "-env:UserInstallation=file://" + os.path.join(folder, "settings"), "--headless",
                    "--convert-to", target, "--outdir", folder, path], check=True, stdout=subprocess.DEVNULL,
                   stderr=subprocess.DEVNULL)


def check_with_libreoffice(path, content):
    csv_filter = "csv:Text - txt - csv (StarCalc):44,34,76,1,,1033,false,true,true,false,false,-1"
    convert(path, csv_filter)
    cells = 0
    for index, rows in enumerate(content):
        name = "%s-S%d.csv" % (os.path.splitext(path)[0], index)
        with open(name, encoding="utf-8", newline="") as file:
            found = list(csv.reader(file))
        for number, row in enumerate(rows):
            for column, value in enumerate(row):
                text = found[number][column].replace("\r\n", "\n")
                if text != shown(value):
                    sys.exit("%s row %d, column %d: %r is shown as %r" % (name, number + 1, column + 1, value, text))
                cells += 1
        os.remove(name)
    return cells


def check_growing(folder):
    """Values in columns that are as narrow as the 500 rows before them."""
    path = os.path.join(folder, "growing.xlsx")
    sizes = (1, 12345, 1234567890, 123456789012344)
    texts = [[str(size), str(-size), "%.2f" % (size / 100), "2024-02-29"] for size in sizes]
    values = [[size, -size / 2, datetime.datetime(2024, 2, 29, 23, 59, 59), size < 9] for size in sizes]
    formatted = [[size, size / 4, size / 4] for size in sizes]
    formats = [scrivalen.Column("a", "integer", format="#,##0"), scrivalen.Column("b", "number", format="#,##0.00"),
               scrivalen.Column("c", "number", format="0.0%")]
    with scrivalen.Document(path) as document:
        for columns, first, rows in ((4, ["1", "1", "1", "a"], texts), (4, [1, 1.5, None, None], values),
                                     (formats, [1, 1, 1], formatted)):
            with document.section() as section, section.table(columns) as table:
                table.rows([first] * 500 + rows)
    convert(path, "pdf")
    seen = subprocess.run(["pdftotext", "-layout", os.path.join(folder, "growing.pdf"), "-"], check=True,
                           stdout=subprocess.PIPE).stdout.decode()
    words = set(seen.split())
    wanted = [text for row in texts for text in row] + ["2024-02-29", "23:59:59", "TRUE", "FALSE"]
    for row, values_row in zip(formatted, values):
        wanted += ["%d" % row[0], shown(values_row[1])]
        wanted += ["{:,}".format(row[0]), "{:,.2f}".format(row[1]), "{:.1%}".format(row[2])]
    missing = [text for text in wanted if text not in words]
    if "#" in seen or missing:
        sys.exit("%s: %d cells of ###; not shown: %s" % (path, seen.count("###"), missing))
    return len(wanted)


def main():
    folder, workbooks, sheets = sys.argv[1], int(sys.argv[2]), int(sys.argv[3])
    read = seen = 0
    for number in range(workbooks):
        path = os.path.join(folder, "typed%d.xlsx" % number)
        content = write(path, random.Random(number), sheets)
        read += check_with_openpyxl(path, content)
        seen += check_with_libreoffice(path, content)
    grown = check_growing(folder)
    print("%d cells read by openpyxl, %d shown by LibreOffice, %d of them in narrow columns" %
          (read, seen + grown, grown))


main()
