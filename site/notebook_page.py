"""A notebook as a page of the site: its text, its code and what the code has printed and drawn."""
import base64


def page(notebook, pictures):
    """The page; plots become files in the folder of pictures."""
    blocks = []
    for cell in notebook["cells"]:
        source = "".join(cell["source"])
        blocks.append(source if cell["cell_type"] == "markdown" else f"```python\n{source}\n```")
        for output in cell.get("outputs", []):
            data = output.get("data", {})
            if "image/png" in data:
                blocks.append(picture(data["image/png"], pictures, len(blocks)))
            else:
                text = "".join(output.get("text") or data["text/plain"])
                blocks.append(f"```text\n{text.rstrip()}\n```")
    return "\n\n".join(blocks) + "\n"


def picture(png, folder, number):
    folder.mkdir(exist_ok=True)
    (folder / f"plot-{number}.png").write_bytes(base64.b64decode("".join(png)))
    return f"![A plot of the cell above]({folder.name}/plot-{number}.png)"
