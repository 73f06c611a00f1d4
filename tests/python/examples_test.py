"""The examples, as programs of their own."""

import functools
import importlib.util
import multiprocessing
import os
import pickle
import subprocess
import sys

from support import DocumentTest

EXAMPLES = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..", "examples")
PACKAGE = os.path.join(EXAMPLES, "..", "python")


class Examples(DocumentTest):
    def run_example(self, name, *arguments):
        return subprocess.run([sys.executable, os.path.join(EXAMPLES, name), *arguments], cwd=self.folder, check=True,
                              stdout=subprocess.PIPE, encoding="utf-8",
                              env={**os.environ, "PYTHONPATH": PACKAGE, "PYTHONDONTWRITEBYTECODE": "1"}).stdout

    def test_the_first_document_has_its_table(self):
        self.run_example("hello_document.py")
        self.assertIn("Tea & biscuits   4.50  2026-01-31\n", self.read_file("hello.txt"))
        self.assertIn("<td>Tea &amp; biscuits</td>", self.read_file("hello.html"))

    def test_the_first_program_of_the_readme_writes_four_files(self):
        self.run_example("sales.py")
        self.assertEqual(self.files(), ["sales.html", "sales.pdf", "sales.rtf", "sales.xlsx"])
        self.assertIn('<td style="text-align:right">12000.00</td>', self.read_file("sales.html"))

    def test_the_excerpts_of_the_guide_write_what_they_show(self):
        output = self.run_example("python_guide.py")
        self.assertIn("Into memory, and to standard output.", output)
        self.assertIn("no such folder/report.txt failed: cannot write 'no such folder/report.txt'", output)
        self.assertIn("report.md 1 ", output)
        self.assertEqual(self.files(), ["arrow.html", "columns.html", "parts.html", "report.md", "values.html",
                                        "values.txt"])
        self.assertRegex(self.read_file("values.txt"), r"Coffee +12\.80 +false\n")
        self.assertIn("2024-02-29", self.read_file("columns.html"))
        self.assertIn("<em>all of them</em>", self.read_file("parts.html"))

    def test_reports_are_written_by_several_processes(self):
        self.assertEqual(len(self.run_example("reports.py", self.folder, "40", "2").splitlines()), 40)
        self.run_example("reports.py", self.folder, "--only", "41", "7")
        self.assertEqual(len(self.files()), 41)
        page = self.read_file("customer-00041.html")
        self.assertIn("<title>Customer 41</title>", page)
        self.assertEqual(page.count("<tr>"), 101)

    def test_a_report_is_a_task_of_a_fresh_process(self):
        specification = importlib.util.spec_from_file_location("reports", os.path.join(EXAMPLES, "reports.py"))
        reports = importlib.util.module_from_spec(specification)
        specification.loader.exec_module(reports)
        sys.modules["reports"] = reports
        sys.path.insert(0, EXAMPLES)
        self.addCleanup(sys.path.remove, EXAMPLES)
        self.addCleanup(sys.modules.pop, "reports")
        task = pickle.loads(pickle.dumps(functools.partial(reports.write_report, self.folder)))
        with multiprocessing.get_context("spawn").Pool(1) as pool:
            self.assertEqual(pool.map(task, [3]), [self.path("customer-00003.html")])
        self.assertIn("<h1", self.read_file("customer-00003.html"))
