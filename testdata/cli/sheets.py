#!/usr/bin/python3
"""Makes and reads back drawings, registers and reports with ezdxf for the
command-line tests of layout creation, its dry run and sheet registers. One
word per job:

  add-title-block IN OUT   IN with a FRAME_A3 title block (SHEET=x,
                           TITLE=pattern) in its layout "Pattern", so the
                           attribute change has something to change.
  busy-frames IN OUT MANY  OUT: IN with a frame, one across it and one inside
                           it; MANY: a drawing of 260 small frames.
  cyrillic-titles IN OUT   IN with each model title block's TITLE set to
                           'Разрез N, "эскиз"'.
  layouts FILE PREFIX      per layout whose name starts with PREFIX: the name,
                           its texts and SHEET attributes, and for its
                           viewport (not the layout's own) scale, twist, width,
                           the model point at its centre and its paper centre;
                           then the release and the audit's errors.
  compare-plan JSON PREFIX FILE
                           compares the --json plan JSON with the viewports of
                           FILE for the layouts starting with PREFIX; one line
                           per difference, then how many were compared and the
                           planned ones not made.
  read-csv FILE            a `frames --csv` file (must open with a byte order
                           mark): the row count, the last three columns, then
                           "Typ SHEET TITLE" per row.
  edit-register IN OUT     edits the register IN as a user would in a
                           spreadsheet and saves it the way a semicolon locale
                           does (no byte order mark): block frames only, in
                           reverse order, A-05 deleted, new Cyrillic names and
                           sheet numbers, one title with a comma and quotes;
                           the IDs of the first two swapped (the drawing was
                           saved by another program) with their corners kept;
                           and a row for a frame that does not exist.
  register-result FILE     the layouts "Лист*" in tab order with their title
                           block's values, the model's title blocks sorted,
                           the index's texts on Pattern (above its label; the
                           first one's position too) and the audit's errors.
  same-warnings JSON ERR   fails unless the report JSON holds exactly the
                           "warning: " lines of ERR, the register's among
                           them; prints their count.

Usage: /usr/bin/python3 sheets.py WORD ARGS...
"""
import csv
import json
import math
import sys

import ezdxf


def model_centre(v):
    """The model point at the middle of viewport v."""
    t = -math.radians(v.dxf.view_twist_angle)
    dx, dy = v.dxf.view_center_point[0], v.dxf.view_center_point[1]
    return (v.dxf.view_target_point[0] + dx * math.cos(t) - dy * math.sin(t),
            v.dxf.view_target_point[1] + dx * math.sin(t) + dy * math.cos(t))


def own_viewports(layout):
    return [v for v in layout.query('VIEWPORT') if v.dxf.id != 1]


def add_title_block(src, out):
    d = ezdxf.readfile(src)
    d.layouts.get('Pattern').add_blockref(
        'FRAME_A3', (0, 0)).add_auto_attribs({'SHEET': 'x', 'TITLE': 'pattern'})
    d.saveas(out)


def busy_frames(src, out, many_out):
    d = ezdxf.readfile(src)
    msp = d.modelspace()

    def box(x, y, w, h):
        msp.add_lwpolyline([(x, y), (x + w, y), (x + w, y + h), (x, y + h)],
                           close=True)
    box(-10000, -10000, 2000, 1000)  # a frame
    box(-9000, -9500, 2000, 1000)    # across it
    box(-9900, -9900, 500, 300)      # inside the first
    d.saveas(out)
    many = ezdxf.new('R2010')
    for i in range(260):
        many.modelspace().add_lwpolyline(
            [(i * 50, 0), (i * 50 + 42, 0), (i * 50 + 42, 29.7),
             (i * 50, 29.7)], close=True)
    many.saveas(many_out)


def cyrillic_titles(src, out):
    d = ezdxf.readfile(src)
    for i, ref in enumerate(d.modelspace().query('INSERT')):
        ref.get_attrib('TITLE').dxf.text = 'Разрез %d, "эскиз"' % (i + 1)
    d.saveas(out)


def layouts(path, prefix):
    d = ezdxf.readfile(path)
    for layout in d.layouts:
        if not layout.name.startswith(prefix):
            continue
        texts = [t.text for t in layout.query('MTEXT')]
        sheets = [a.dxf.text for i in layout.query('INSERT')
                  for a in i.attribs if a.dxf.tag == 'SHEET']
        print('%s|%s|%s' % (layout.name, ';'.join(texts), ';'.join(sheets)))
        for v in own_viewports(layout):
            cx, cy = model_centre(v)
            print('  viewport %.6g %.6g %.6g %.4f %.4f %.6g %.6g' % (
                v.dxf.height / v.dxf.view_height,
                v.dxf.view_twist_angle % 360, v.dxf.width, cx, cy,
                v.dxf.center[0], v.dxf.center[1]))
    print('release', d.dxfversion)
    print('audit errors', len(d.audit().errors))


def compare_plan(plan_path, prefix, path):
    plan = {row['name']: row
            for row in json.load(open(plan_path))['layouts']}
    d = ezdxf.readfile(path)

    def near(a, b):
        return abs(a - b) <= 1e-6 * max(1.0, abs(a), abs(b))
    compared = 0
    for layout in d.layouts:
        if not layout.name.startswith(prefix):
            continue
        row = plan.pop(layout.name)
        v = own_viewports(layout)[0]
        cx, cy = model_centre(v)
        pairs = [('scale', row['scale'], v.dxf.height / v.dxf.view_height),
                 ('twist', row['twist'] % 360, v.dxf.view_twist_angle % 360),
                 ('width', row['size'][0], v.dxf.width),
                 ('height', row['size'][1], v.dxf.height),
                 ('x', row['centre'][0], cx), ('y', row['centre'][1], cy)]
        for what, planned, made in pairs:
            if not near(planned, made):
                print(layout.name, what, planned, made)
        compared += 1
    print('compared', compared, 'not made', sorted(plan))


def read_csv(path):
    raw = open(path, 'rb').read()
    assert raw.startswith(b'\xef\xbb\xbf')
    rows = list(csv.DictReader(open(path, encoding='utf-8-sig', newline='')))
    print(len(rows), list(rows[0])[-3:])
    for row in rows:
        print(row['Typ'], row['SHEET'], row['TITLE'])


def edit_register(src, out):
    rows = list(csv.reader(open(src, encoding='utf-8-sig', newline='')))
    head, data = rows[0], rows[1:]
    col = {name: i for i, name in enumerate(head)}
    data = [r for r in data if r[col['Typ']] == 'Block' and
            r[col['SHEET']] != 'A-05']
    data.reverse()
    for n, r in enumerate(data, 1):
        r[col['Layout Name']] = 'Лист %d' % n
        r[col['SHEET']] = 'Л-%d' % n
    data[0][col['TITLE']] = 'План, "этаж" 1'
    data[0][col['ID']], data[1][col['ID']] = (data[1][col['ID']],
                                              data[0][col['ID']])
    ghost = list(data[0])
    ghost[col['ID']] = '99999'
    ghost[col['PointX1']] = '777,5'
    ghost[col['Layout Name']] = 'Призрак'
    data.append(ghost)
    with open(out, 'w', encoding='utf-8', newline='') as f:
        w = csv.writer(f, delimiter=';', lineterminator='\r\n')
        w.writerow(head)
        w.writerows(data)


def register_result(path):
    d = ezdxf.readfile(path)

    def values(insert):
        return '|'.join(a.dxf.text for a in insert.attribs)
    for layout in d.layouts:
        if layout.name.startswith('Лист'):
            print(layout.name, *[values(i) for i in layout.query('INSERT')])
    print('model', sorted(values(i) for i in d.modelspace().query('INSERT')))
    texts = [t for t in d.layouts.get('Pattern').query('TEXT')
             if t.dxf.insert.y > 100]
    print('index at %g,%g' % (texts[0].dxf.insert.x, texts[0].dxf.insert.y))
    print('index', ';'.join(t.dxf.text for t in texts))
    print('audit errors', len(d.audit().errors))


def same_warnings(report_path, err_path):
    r = json.load(open(report_path, encoding='utf-8'))
    err = [l[len('warning: '):] for l in
           open(err_path, encoding='utf-8').read().splitlines()
           if l.startswith('warning: ')]
    assert r['warnings'] == err, (r['warnings'], err)
    assert any('matches no frame: ID 99999' in w for w in err), err
    assert any('4 frames have no register row' in w for w in err), err
    print(len(err))


JOBS = {
    'add-title-block': add_title_block,
    'busy-frames': busy_frames,
    'cyrillic-titles': cyrillic_titles,
    'layouts': layouts,
    'compare-plan': compare_plan,
    'read-csv': read_csv,
    'edit-register': edit_register,
    'register-result': register_result,
    'same-warnings': same_warnings,
}

JOBS[sys.argv[1]](*sys.argv[2:])
