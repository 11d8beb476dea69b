// Setups that were missed.
const fillMissed = (row, m) => {
  const cells = cellsOf(row, ["", "", "", "talkers", "number call", "end"]);
  dayAndClock(cells[0], raw.missedAt[m], raw.missedSure[m] === 1 ? "~" : "");
  const name = outcomeNames[missedWhy[m]];
  cells[1].textContent = name.replaceAll("_", " ");
  cells[1].title = why[name];
  cells[2].textContent = groupName(missedGroup[m]);
  cells[3].textContent = radioName(raw.missedRadio[m]);
  cells[4].textContent = raw.missedId[m] < 0 ? "" : raw.missedId[m];
  cells[5].textContent = raw.details[raw.missedDetail[m]];
};
const missedGrid = new Grid(byId("missed-grid"), [["Time"], ["Why"], ["Group"], ["Radio", "talkers"],
  ["Call ID", "number call"], ["", "end"]], fillMissed, null, 200);
const setUpMissed = () => {
  const counts = raw.outcomes.filter(([, n]) => n > 0).sort((a, b) => b[1] - a[1]);
  const most = Math.max(1, ...counts.map(([, n]) => n));
  byId("outcomes").append(counts.length === 0
    ? element("p", {class: "quiet"}, "There is no control channel log with setups.")
    : tableOf(["Outcome", "#Setups", "Share", "Meaning"], counts.map(([name, n]) =>
      [name.replaceAll("_", " "), countText(n), barOf(n / most), why[name]]),
    "Outcomes of all setups"));
  const whySelect = byId("missed-why");
  whySelect.append(element("option", {value: ""}, "all"));
  raw.outcomes.forEach(([name, n], at) => {
    if (n === 0 || heard.has(name)) return;
    whySelect.append(element("option", {value: at}, name.replaceAll("_", " ")));
  });
  const perGroup = new Int32Array(groups.length);
  missedGroup.forEach((g) => { if (g >= 0) ++perGroup[g]; });
  fillSelect(byId("missed-group"), groups, perGroup, "all");
  const show = () => {
    const reason = whySelect.value;
    const group = byId("missed-group").value;
    const rows = [];
    for (let m = 0; m < missedWhy.length; ++m) {
      const wanted = reason === "" ? !heard.has(outcomeNames[missedWhy[m]])
        : missedWhy[m] === Number(reason);
      if (!wanted) continue;
      if (group !== "" && missedGroup[m] !== Number(group)) continue;
      rows.push(m);
    }
    byId("missed-count").textContent = `${counted(rows.length, "setup")}; "~" marks a time that ` +
      "lies between those of the event log";
    byId("missed-grid").hidden = missedWhy.length === 0;
    missedGrid.show(Int32Array.from(rows));
  };
  whySelect.addEventListener("change", show);
  byId("missed-group").addEventListener("change", show);
  show();
};
