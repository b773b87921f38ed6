-- Makes of Markdown what reads well as a manual page: a table becomes a list of terms, since its
-- columns would be too narrow; names stand out; lines of code fit the width.

local function upper(inlines)
    return pandoc.walk_block(pandoc.Plain(inlines), {
        Str = function(text) return pandoc.Str(pandoc.text.upper(text.text)) end,
    }).content
end

function Header(header)
    if header.level == 1 then header.content = upper(header.content) end
    return header
end

local escapes = {["\\"] = "\\e", ["-"] = "\\-", ["'"] = "\\(aq", ["`"] = "\\(ga", ["^"] = "\\(ha",
                 ["~"] = "\\(ti"}

local function escaped(text) return (text:gsub("[-\\'`^~]", escapes)) end

function Code(code)
    return pandoc.RawInline("man", "\\f[B]\\&" .. escaped(code.text) .. "\\f[R]")
end

-- What is left out ends no sentence, behind which there would be two blanks.
function Str(text)
    return text.text:match("%.%.%.$") and {text, pandoc.RawInline("man", "\\&")} or text
end

-- A page of the documentation is no page here.
function Link(link) return link.content end

-- Breaks a line that is too long behind a comma or an operator, or else at a blank. What follows
-- stands below the last column of a table, or further in.
local function wrapped(line, width)
    local column = line:match("^.*%S   +()%S[^ ]* ")
    local indent = column and column - 1 or #line:match("^ *") + 4
    local lines = {}
    while utf8.len(line) > width do
        local head = line:sub(1, utf8.offset(line, width) - 1)
        local cut
        for _, pattern in ipairs({"^.*[,;|&] ()", "^.* ()", "^.*,()"}) do
            local at = head:match(pattern)
            if not cut and at and at > indent + 1 then cut = at end
        end
        if not cut then break end
        lines[#lines + 1] = line:sub(1, cut - 1):gsub(" +$", "")
        line = string.rep(" ", indent) .. line:sub(cut)
    end
    lines[#lines + 1] = line
    return table.concat(lines, "\n")
end

-- A block with long lines begins further left, as far as they need.
function CodeBlock(block)
    local width, shift = 70, 2
    for line in block.text:gmatch("[^\n]+") do
        width = math.max(width, math.min(utf8.len(line), 77))
    end
    shift = shift + 70 - width
    local text = block.text:gsub("[^\n]+", function(line) return wrapped(line, width) end)
    text = ("\n" .. escaped(text)):gsub("\n%.", "\n\\&."):sub(2)
    return pandoc.RawBlock("man", ".PP\n.RS " .. shift .. "\n.nf\n" .. text .. "\n.fi\n.RE")
end

-- The cells between the first and the last, each with its column's name in front of it, save what
-- needs none.
local plain = {Form = true, Where = true, needed = true}

local function terms(row, heads)
    local inlines = pandoc.List(pandoc.utils.blocks_to_inlines(row.cells[1].contents))
    local between = pandoc.List()
    for i = 2, #row.cells - 1 do
        local cell = pandoc.utils.blocks_to_inlines(row.cells[i].contents)
        if #cell > 0 then
            between:insert(pandoc.Str(#between > 0 and "; " or " ("))
            if not plain[heads[i]] and not plain[pandoc.utils.stringify(cell)] then
                between:insert(pandoc.Str(pandoc.text.lower(heads[i]) .. ": "))
            end
            between:extend(cell)
        end
    end
    if #between > 0 then between:insert(pandoc.Str(")")) end
    return inlines .. between
end

function Table(tab)
    local heads, items = {}, {}
    for i, cell in ipairs(tab.head.rows[1].cells) do
        heads[i] = pandoc.utils.stringify(cell.contents)
    end
    for _, row in ipairs(tab.bodies[1].body) do
        local meaning = row.cells[#row.cells].contents
        items[#items + 1] = {terms(row, heads), {meaning}}
    end
    return pandoc.DefinitionList(items)
end
