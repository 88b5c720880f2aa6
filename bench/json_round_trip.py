# A nested list of (presentation, value) items written as JSON text and read
# back, several rounds: records of a number, a name and a list of three numbers.
import json


def item(presentation, value):
    return {"p": presentation, "v": value}


def by_presentation(items, presentation):
    for entry in items:
        if entry["p"] == presentation:
            return entry["v"]
    return ""


def main():
    records = 2000
    rounds = 10
    checksum = 0
    for pass_ in range(1, rounds + 1):
        outer = []
        for i in range(1, records + 1):
            record = []
            record.append(item("id", i))
            record.append(item("name", "name" + str(i)))
            parts = [item("", i % 7), item("", i % 11), item("", i % 13)]
            record.append(item("parts", parts))
            outer.append(item("r" + str(i), record))
        back = json.loads(json.dumps(outer))
        for i in range(1, len(back) + 1):
            record = back[i - 1]["v"]
            parts = by_presentation(record, "parts")
            checksum = (checksum + by_presentation(record, "id") + len(record[1]["v"]) + parts[0]["v"]
                        + parts[1]["v"] + parts[2]["v"])
    print("json_round_trip " + str(len(back)) + " " + str(checksum))


main()
