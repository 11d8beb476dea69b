// What is shown as files. The keys and columns are those of the companion's own records.
const recordOf = (i) => ({
  start: i < known ? isoText(starts[i]) : null,
  length_s: lengths[i] < 0 ? null : lengths[i] / 10,
  mcc: raw.mcc[i] < 0 ? null : raw.mcc[i],
  mnc: raw.mnc[i] < 0 ? null : raw.mnc[i],
  gssi: groupOf[i] < 0 ? null : groups[groupOf[i]].number,
  label: groupOf[i] < 0 ? null : groups[groupOf[i]].label || null,
  call_id: callIds[i] < 0 ? null : callIds[i],
  carrier: carriers[i] < 0 ? null : carriers[i],
  slot: slots[i] < 0 ? null : slots[i],
  talkers: Array.from({length: talkerFrom[i + 1] - talkerFrom[i]}, (_, at) => {
    const radio = radios[talkers[talkerFrom[i] + at]];
    return {ssi: radio.number, label: radio.label || null, pos_s: talkerAt[talkerFrom[i] + at]};
  }),
  recording: recordingOf[i] < 0 ? null : raw.file[recordingOf[i]],
  end: endOf(i),
});
const csvCell = (value) => {
  if (value === null) return "";
  let text = String(value);
  const formula = /^[ \t\r\n\v\f]*[=+\-@]/.test(text) || text.charCodeAt(0) < 32;
  if (typeof value === "string" && formula) text = `'${text}`;
  return /[",\r\n]/.test(text) ? `"${text.replaceAll('"', '""')}"` : text;
};
const csvOf = (rows) => {
  const lines = ["start,length_s,mcc,mnc,gssi,label,call_id,carrier,slot,talkers,recording,end"];
  for (const i of rows) {
    const record = recordOf(i);
    record.talkers = record.talkers.map((talker) => `${talker.ssi}@${talker.pos_s}`).join(" ");
    lines.push(Object.values(record).map(csvCell).join(","));
  }
  return lines.join("\n") + "\n";
};
const jsonOf = (rows) => Array.from(rows, (i) => JSON.stringify(recordOf(i)) + "\n").join("");
const m3uOf = (rows) => {
  const lines = ["#EXTM3U"];
  for (const i of rows) {
    const r = recordingOf[i];
    if (r < 0) continue;
    const time = i < known ? `${clockText(starts[i])} ` : "";
    const title = (time + groupName(groupOf[i])).replace(/[\x00-\x1f]/g, " ");
    lines.push(`#EXTINF:${Math.round(raw.seconds[r] / 10)},${title}`, recordingPath(r));
  }
  return lines.join("\n") + "\n";
};
const download = (name, type, text) => {
  const url = URL.createObjectURL(new Blob([text], {type}));
  element("a", {href: url, download: name}).click();
  setTimeout(() => URL.revokeObjectURL(url), 60000);
};
